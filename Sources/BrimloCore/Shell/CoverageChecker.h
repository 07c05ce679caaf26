#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Whether a path is backed up elsewhere.
///
/// Claims only what it can verify. `path` is absolute. Every function but `warnings` runs tools and
/// blocks; any thread.
namespace Brimlo::CoverageChecker {

/// A sentence for each kind of backup that holds everything at `path`.
[[nodiscard]] std::vector<std::string> covered(const std::string& path);

/// Warnings before removing `path`: that it lies in the folder of a cloud service.
[[nodiscard]] std::vector<std::string> warnings(std::string_view path);

/// A sentence naming the remote branch that holds everything at `path`.
///
/// Nullopt at the least doubt: no upstream or a local one, a commit not pushed (for a whole
/// repository on any branch, or a stash), a file that is changed, untracked, ignored or not watched
/// for changes, a nested repository. Runs no code of the repository and uses no network.
[[nodiscard]] std::optional<std::string> gitCoverage(const std::string& path);

/// A sentence naming the latest Time Machine backup, which is looked up once, in the user's
/// language; nullopt when `path` has changed since or is excluded from backups.
[[nodiscard]] std::optional<std::string> timeMachineCoverage(const std::string& path);

/// The same for the backup that started at `backup`, using the tool at the absolute path `tmutil`.
[[nodiscard]] std::optional<std::string> timeMachineCoverage(
    const std::string& tmutil, const std::string& path, std::chrono::sys_seconds backup);

/// The start of the latest backup, by its name; nullopt when none is known.
[[nodiscard]] std::optional<std::chrono::sys_seconds> latestBackup(const std::string& tmutil);

}  // namespace Brimlo::CoverageChecker
