#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo::Platform {

/// How a command that needed an administrator's rights ended.
struct PrivilegedRun {
    enum class Outcome : std::uint8_t { done, cancelled, failed };
    Outcome outcome = Outcome::failed;
    std::string text;  ///< Why it failed, on one line, in the system's words where it has some.

    bool operator==(const PrivilegedRun&) const = default;
};

/// Paths where the program may be that asks for those rights; the first that starts counts.
using AuthorizerPlaces = std::vector<std::string>;

/// Where that program is on this system. The search path is not consulted.
[[nodiscard]] AuthorizerPlaces usualAuthorizers();

/// Runs a command of the shell with an administrator's rights, once the user has agreed to it at
/// the system's own prompt; cancelled when the user has not. Blocks, for ten minutes at most.
[[nodiscard]] PrivilegedRun runAsAdministrator(
    const std::string& shellCommand, const AuthorizerPlaces& places = usualAuthorizers());

}  // namespace Brimlo::Platform
