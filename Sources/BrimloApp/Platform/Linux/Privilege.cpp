#include "BrimloApp/Platform/Privilege.h"

#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Text.h"

namespace Brimlo::Platform {

namespace {

/// The last line of the error output that gives a reason.
std::string reason(std::string_view text) {
    constexpr std::string_view kNotice = "This incident has been reported.";
    text = Text::stripped(text);
    if (text.ends_with(kNotice)) {  // pkexec's last line; the reason is above it.
        text = Text::stripped(text.substr(0, text.size() - kNotice.size()));
    }
    const std::string_view line = Text::stripped(text.substr(text.find_last_of('\n') + 1));
    return line.empty() ? "authorization failed" : Text::printable(line);
}

}  // namespace

AuthorizerPlaces usualAuthorizers() {
    return {"/usr/bin/pkexec"};
}

PrivilegedRun runAsAdministrator(const std::string& shellCommand, const AuthorizerPlaces& places) {
    using Outcome = PrivilegedRun::Outcome;
    constexpr double kTimeoutSeconds = 600;
    constexpr int kDismissed = 126;
    for (const std::string& place : places) {
        const auto ending = Shell::run({
            .executable = place,
            .arguments = {"/bin/sh", "-c", shellCommand},
            .timeoutSeconds = kTimeoutSeconds,
            .standardError = Shell::StandardError::keep,
        });
        if (ending && ending->code != 0 && ending->code != kDismissed) {
            return {Outcome::failed, reason(ending->err)};
        }
        if (ending) {
            return {ending->code == 0 ? Outcome::done : Outcome::cancelled, ""};
        }
    }
    return {Outcome::failed, "the system has no way to ask for administrator rights"};
}

}  // namespace Brimlo::Platform
