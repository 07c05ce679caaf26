#pragma once

#include <chrono>
#include <optional>
#include <string>

/// What the backups of macOS hold, asked of its tool, whose absolute path is `tmutil`.
namespace Brimlo::TimeMachine {

/// When the latest backup began, by its name; nullopt when none is known. Blocks.
[[nodiscard]] std::optional<std::chrono::sys_seconds> latestBackup(const std::string& tmutil);

/// A sentence that names the backup of that time, in the user's language; nullopt when `path` has
/// been changed since or is excluded from backups. Blocks.
[[nodiscard]] std::optional<std::string> sentence(
    const std::string& tmutil, const std::string& path, std::chrono::sys_seconds backup);

}  // namespace Brimlo::TimeMachine
