#include "BrimloCore/Platform/RunningApps.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

#import <AppKit/AppKit.h>

namespace Brimlo::Platform {

std::vector<std::string> runningAppNames() {
    @autoreleasepool {
        std::vector<std::string> names;
        for (NSRunningApplication* const app in NSWorkspace.sharedWorkspace.runningApplications) {
            if (app.localizedName != nil) {
                names.push_back(text(app.localizedName));
            }
        }
        return names;
    }
}

}  // namespace Brimlo::Platform
