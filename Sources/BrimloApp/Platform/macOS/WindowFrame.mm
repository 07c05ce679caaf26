#include "BrimloApp/Platform/WindowFrame.h"

#include <QtGui/QWindow>

#import <AppKit/AppKit.h>

namespace Brimlo::Platform {

void joinFrame(QWindow& window) {
    // What Qt calls the number of a window is its view.
    NSView* const view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    view.window.titlebarAppearsTransparent = YES;
    view.window.titleVisibility = NSWindowTitleHidden;
    view.window.toolbarStyle = NSWindowToolbarStyleUnified;
}

}  // namespace Brimlo::Platform
