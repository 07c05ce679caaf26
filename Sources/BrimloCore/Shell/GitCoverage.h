#pragma once

#include <optional>
#include <string>

/// Whether a git repository keeps a path elsewhere.
namespace Brimlo::GitCoverage {

/// A sentence that names the remote branch which holds everything at `path`, by the program at the
/// absolute path `git`.
///
/// Nullopt for the least doubt: no upstream, a commit not pushed, a file that is changed, untracked
/// or ignored, a repository within. Runs nothing that the repository brings and reaches for no
/// network. Blocks for up to six runs of git.
[[nodiscard]] std::optional<std::string> sentence(const std::string& git, const std::string& path);

}  // namespace Brimlo::GitCoverage
