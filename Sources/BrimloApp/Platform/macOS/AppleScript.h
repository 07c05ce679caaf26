#pragma once

#include "BrimloApp/Platform/Privilege.h"

#include <optional>
#include <string>
#include <string_view>

/// The words in which a command is handed to AppleScript, and those in which its failure comes
/// back. Plain text work: no call of the system.
namespace Brimlo::Platform::AppleScript {

/// The source of a script that runs a command of the shell with an administrator's rights.
[[nodiscard]] std::string asAdministrator(std::string_view shellCommand);

/// How a run ended that gave an error with this number and message, where it has them.
[[nodiscard]] PrivilegedRun ending(
    std::optional<long> number, const std::optional<std::string>& message);

}  // namespace Brimlo::Platform::AppleScript
