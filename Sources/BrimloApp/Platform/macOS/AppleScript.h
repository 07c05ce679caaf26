#pragma once

#include "BrimloApp/Platform/Privilege.h"

#include <optional>
#include <string>
#include <string_view>

/// How a command is passed to AppleScript, and how its errors are read. Only text: no system calls,
/// so that Linux tests it too.
namespace Brimlo::Platform::AppleScript {

/// The source of a script that runs a shell command with administrator rights.
[[nodiscard]] std::string asAdministrator(std::string_view shellCommand);

/// The outcome of a run that reported an error with this number and message, if any.
[[nodiscard]] PrivilegedRun ending(
    std::optional<long> number, const std::optional<std::string>& message);

}  // namespace Brimlo::Platform::AppleScript
