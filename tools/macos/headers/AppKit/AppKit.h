#pragma once

// clang-format off

// What Brimlo uses of AppKit; see Foundation.h of the same folder.

#include <Foundation/Foundation.h>

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
