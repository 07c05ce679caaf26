#include "BrimloApp/Platform/Bundle.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"
#include "BrimloCore/Support/Path.h"

namespace Brimlo::Platform {

std::string resourceFolder() {
    @autoreleasepool {
        return Path::standardized(text(NSBundle.mainBundle.resourcePath));
    }
}

}  // namespace Brimlo::Platform
