#pragma once

#include "BrimloCore/Models/Error.h"

#include <string>
#include <string_view>

#ifdef __OBJC__
#import <Foundation/Foundation.h>
#endif

/// Conversions between Foundation's values and ours. Those of its objects are for Objective-C++.
namespace Brimlo::Platform {

/// An `NSError` as an `Error`: with the `errno` value of the same meaning, where there is one, else
/// with its own domain and code.
///
/// `description`, the localized one, is kept unless empty.
[[nodiscard]] Error cocoaError(std::string_view domain, long code, std::string description);

#ifdef __OBJC__

/// "" for nil.
inline std::string text(NSString* string) {
    const char* const bytes = string.UTF8String;
    return bytes != nullptr ? bytes : "";
}

/// The URL of a path, byte by byte, without following a symlink.
inline NSURL* fileUrl(const std::string& path, BOOL isDirectory) {
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str()
                                          isDirectory:isDirectory
                                        relativeToURL:nil];
}

inline Error cocoaError(NSError* error) {
    return cocoaError(text(error.domain), error.code, text(error.localizedDescription));
}

#endif

}  // namespace Brimlo::Platform
