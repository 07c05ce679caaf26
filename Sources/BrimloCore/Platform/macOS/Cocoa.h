#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/macOS/CocoaError.h"

#include <optional>
#include <string>

#import <Foundation/Foundation.h>

/// Conversions between Foundation's values and ours, for the Objective-C++ sources of this folder.
namespace Brimlo::Platform {

/// "" for nil.
inline std::string text(NSString* string) {
    const char* const bytes = string.UTF8String;
    return bytes != nullptr ? bytes : "";
}

/// What the path leads to, a link itself; its bytes stay as they are.
inline NSURL* fileUrl(const std::string& path, BOOL isDirectory) {
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str()
                                          isDirectory:isDirectory
                                        relativeToURL:nil];
}

inline Error cocoaError(NSError* error) {
    return cocoaError(text(error.domain), error.code, text(error.localizedDescription));
}

}  // namespace Brimlo::Platform
