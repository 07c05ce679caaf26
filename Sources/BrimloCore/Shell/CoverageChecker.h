#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Whether a path is backed up elsewhere.
///
/// Errs on the side of silence: what can't be verified is not claimed. `path` is absolute. Every
/// function but `warnings` runs tools and blocks; any thread.
namespace Brimlo::CoverageChecker {

/// A sentence for each kind of backup that holds everything at `path`.
[[nodiscard]] std::vector<std::string> covered(const std::string& path);

/// Warnings before removing `path`: that it lies in the folder of a cloud service.
[[nodiscard]] std::vector<std::string> warnings(std::string_view path);

/// The sentence about the git repository of `path`.
[[nodiscard]] std::optional<std::string> gitCoverage(const std::string& path);

/// The sentence about the backups of macOS; the latest backup is looked up once.
[[nodiscard]] std::optional<std::string> timeMachineCoverage(const std::string& path);

}  // namespace Brimlo::CoverageChecker
