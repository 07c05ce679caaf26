#include "BrimloApp/Platform/SharedWindow.h"

namespace Brimlo {

/// The system starts an application once.
bool SharedWindow::handOver(const WindowRequest& /*request*/) {
    return false;
}

}  // namespace Brimlo
