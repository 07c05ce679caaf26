#include "BrimloCore/Platform/SystemStores.h"

namespace Brimlo::Platform {

std::vector<SystemStore> systemStores(const std::string& root) {
    return {
        {.name = "System log",
         .about = "What the system and its services have logged. It has a limit of its own.",
         .paths = {root + "private/var/db/diagnostics", root + "private/var/db/uuidtext"},
         .commands = {"sudo log erase --all"}                             },
        {.name = "Simulator runtimes",
         .about = "Systems for the simulators of Xcode, also those in use.",
         .paths = {root + "Library/Developer/CoreSimulator/Images"},
         .commands = {"xcrun simctl runtime delete --notUsedSinceDays 90"}},
    };
}

}  // namespace Brimlo::Platform
