#include "BrimloApp/Platform/Graphics.h"

namespace Brimlo::Platform {

bool drawsInSoftware() {
    // Qt draws by Metal, which every Mac with this system has a processor for.
    return false;
}

}  // namespace Brimlo::Platform
