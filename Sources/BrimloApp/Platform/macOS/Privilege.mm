#include "BrimloApp/Platform/Privilege.h"

#include "BrimloApp/Platform/macOS/AppleScript.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"

namespace Brimlo::Platform {

namespace {

PrivilegedRun ending(NSDictionary<NSString*, id>* error) {
    const id number = error[NSAppleScriptErrorNumber];
    const id message = error[NSAppleScriptErrorMessage];
    std::optional<long> code;
    if ([number isKindOfClass:[NSNumber class]]) {
        code = static_cast<NSNumber*>(number).integerValue;
    }
    std::optional<std::string> words;
    if ([message isKindOfClass:[NSString class]]) {
        words = text(static_cast<NSString*>(message));
    }
    return AppleScript::ending(code, words);
}

}  // namespace

AuthorizerPlaces usualAuthorizers() {
    return {};
}

// The system's own prompt is part of the script's run, so that there is no program to look for.
PrivilegedRun runAsAdministrator(
    const std::string& shellCommand, const AuthorizerPlaces& /*places*/) {
    @autoreleasepool {
        const std::string words = AppleScript::asAdministrator(shellCommand);
        NSString* source = [NSString stringWithUTF8String:words.c_str()];
        NSAppleScript* script = source != nil ? [[NSAppleScript alloc] initWithSource:source] : nil;
        if (script == nil) {
            return {PrivilegedRun::Outcome::failed, "could not build install script"};
        }
        NSDictionary<NSString*, id>* error = nil;
        [script executeAndReturnError:&error];
        return error == nil ? PrivilegedRun{PrivilegedRun::Outcome::done, ""} : ending(error);
    }
}

}  // namespace Brimlo::Platform
