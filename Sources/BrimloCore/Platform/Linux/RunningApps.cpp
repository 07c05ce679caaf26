#include "BrimloCore/Platform/RunningApps.h"

#include "BrimloCore/Platform/Linux/ProcessNames.h"

namespace Brimlo::Platform {

std::vector<std::string> runningAppNames() {
    return applicationNames("/proc", DesktopEntry::installed());
}

}  // namespace Brimlo::Platform
