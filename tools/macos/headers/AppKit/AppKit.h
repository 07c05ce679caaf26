#pragma once

// clang-format off

// What Brimlo uses of AppKit; see Foundation.h of the same folder.

#include <Foundation/Foundation.h>

@class NSWindow;

typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) {
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1,
};

typedef NS_ENUM(NSInteger, NSWindowToolbarStyle) {
    NSWindowToolbarStyleUnified = 3,
};

@interface NSResponder : NSObject
@end

@interface NSView : NSResponder
@property(readonly, assign) NSWindow* window;
@end

@interface NSWindow : NSResponder
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@property NSWindowToolbarStyle toolbarStyle;
@end

@interface NSRunningApplication : NSObject
@property(readonly, copy) NSString* localizedName;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)fileURLs;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
@end
