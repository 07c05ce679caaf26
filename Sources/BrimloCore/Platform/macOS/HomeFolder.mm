#include "BrimloCore/Platform/HomeFolder.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <cstdlib>

namespace Brimlo::Platform {

std::string homeFolder() {
    // Foundation obeys this variable too, but only as it was when the program started.
    const char* const fixed = std::getenv("CFFIXED_USER_HOME");
    if (fixed != nullptr && fixed[0] == '/') {
        return fixed;
    }
    @autoreleasepool {
        return text(NSHomeDirectory());
    }
}

}  // namespace Brimlo::Platform
