#pragma once

#include <chrono>
#include <optional>
#include <string>

/// The backups of macOS, through its tool, whose absolute path is `tmutil`.
namespace Brimlo::TimeMachine {

/// The start of the latest backup, by its name; nullopt when none is known. Blocks.
[[nodiscard]] std::optional<std::chrono::sys_seconds> latestBackup(const std::string& tmutil);

/// A sentence naming the backup of that time, in the user's language; nullopt when `path` has
/// changed since or is excluded from backups. Blocks.
[[nodiscard]] std::optional<std::string> sentence(
    const std::string& tmutil, const std::string& path, std::chrono::sys_seconds backup);

}  // namespace Brimlo::TimeMachine
