#include "BrimloApp/Platform/Desktop.h"

#include "BrimloCore/Platform/Privacy.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"
#include "BrimloCore/Support/Path.h"

#include <QtGui/QWindow>

#import <AppKit/AppKit.h>
#include <sys/stat.h>

namespace Brimlo {

QString Desktop::bootVolume() {
    return tr("Macintosh HD");
}

QString Desktop::fileManager() {
    return tr("Finder");
}

bool Desktop::hasPrivacyPage() {
    return !Platform::privacySettingsAddress().empty();
}

QString Desktop::menuBar() {
    return QStringLiteral("MacMenuBar.qml");
}

// The Finder always answers: neither `failed` nor `open` is needed.
void Desktop::reveal(
    const std::vector<std::string>& paths,
    const std::function<void()>& /*failed*/,
    const OpenFolder& /*open*/) {
    @autoreleasepool {
        NSMutableArray<NSURL*>* const urls = [[NSMutableArray alloc] init];
        for (const std::string& path : paths) {
            struct stat status{};
            const BOOL isDirectory = lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
            [urls addObject:Platform::fileUrl(path, isDirectory)];
        }
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:urls];
    }
}

bool Desktop::drawsInSoftware() {
    // Qt draws with Metal, and every Mac with this system has a GPU for it.
    return false;
}

void Desktop::joinFrame(QWindow& window) {
    // On macOS, a window's id is its NSView.
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    view.window.titlebarAppearsTransparent = YES;
    view.window.titleVisibility = NSWindowTitleHidden;
    view.window.toolbarStyle = NSWindowToolbarStyleUnified;
}

std::string Desktop::resourceFolder() {
    @autoreleasepool {
        return Path::standardized(Platform::text(NSBundle.mainBundle.resourcePath));
    }
}

}  // namespace Brimlo
