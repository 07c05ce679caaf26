#include "BrimloApp/Platform/WindowFrame.h"

namespace Brimlo::Platform {

void joinFrame(QWindow& /*window*/) {
    // The frame is the desktop's own.
}

}  // namespace Brimlo::Platform
