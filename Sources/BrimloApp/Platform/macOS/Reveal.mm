#include "BrimloApp/Platform/Reveal.h"

#include "BrimloCore/Platform/macOS/Cocoa.h"

#import <AppKit/AppKit.h>
#include <sys/stat.h>

namespace Brimlo::Platform {

// The Finder always answers, so that nothing else is needed.
void reveal(
    const std::vector<std::string>& paths,
    const std::function<void()>& /*failed*/,
    const std::function<bool(const QUrl&)>& /*open*/) {
    @autoreleasepool {
        NSMutableArray<NSURL*>* const urls = [[NSMutableArray alloc] init];
        for (const std::string& path : paths) {
            struct stat status {};
            const BOOL isDirectory = lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
            [urls addObject:fileUrl(path, isDirectory)];
        }
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:urls];
    }
}

}  // namespace Brimlo::Platform
