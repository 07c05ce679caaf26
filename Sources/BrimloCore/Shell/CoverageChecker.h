#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Whether what lies at a path is safe elsewhere already.
///
/// Errs towards silence: what can't be found out is not claimed. `path` is absolute. Each call but
/// `warnings` runs tools and blocks; any thread.
namespace Brimlo::CoverageChecker {

/// A sentence for each kind of backup that holds everything at `path`.
[[nodiscard]] std::vector<std::string> covered(const std::string& path);

/// What to know before removing `path`: that it lies in the folder of a cloud service.
[[nodiscard]] std::vector<std::string> warnings(std::string_view path);

/// The sentence for the git repository that `path` lies in.
[[nodiscard]] std::optional<std::string> gitCoverage(const std::string& path);

/// The sentence for the backups of macOS; the latest one is asked for once.
[[nodiscard]] std::optional<std::string> timeMachineCoverage(const std::string& path);

}  // namespace Brimlo::CoverageChecker
