#include "BrimloApp/Platform/macOS/AppleScript.h"

namespace Brimlo::Platform::AppleScript {

std::string asAdministrator(std::string_view shellCommand) {
    std::string source = "do shell script \"";
    for (const char character : shellCommand) {
        if (character == '\\' || character == '"') {
            source += '\\';
        }
        source += character;
    }
    return source + "\" with administrator privileges";
}

PrivilegedRun ending(std::optional<long> number, const std::optional<std::string>& message) {
    constexpr long kUserCancelled = -128;
    if (number == kUserCancelled) {
        return {PrivilegedRun::Outcome::cancelled, ""};
    }
    return {PrivilegedRun::Outcome::failed, message.value_or("authorization failed")};
}

}  // namespace Brimlo::Platform::AppleScript
