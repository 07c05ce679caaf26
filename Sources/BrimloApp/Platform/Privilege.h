#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo::Platform {

/// The outcome of a command that needed administrator rights.
struct PrivilegedRun {
    enum class Outcome : std::uint8_t { done, cancelled, failed };
    Outcome outcome = Outcome::failed;
    std::string text;  ///< Why it failed, on one line, in the system's words if it has any.

    bool operator==(const PrivilegedRun&) const = default;
};

/// Candidate paths of the program that grants those rights; the first that starts is used.
using AuthorizerPlaces = std::vector<std::string>;

/// The path of that program on this system. The search path is not used.
[[nodiscard]] AuthorizerPlaces usualAuthorizers();

/// Runs a shell command with administrator rights, after the user agreed at the system's prompt;
/// cancelled if the user did not. Blocks for at most ten minutes.
[[nodiscard]] PrivilegedRun runAsAdministrator(
    const std::string& shellCommand, const AuthorizerPlaces& places = usualAuthorizers());

}  // namespace Brimlo::Platform
