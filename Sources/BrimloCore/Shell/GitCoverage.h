#pragma once

#include <optional>
#include <string>

/// Whether a git repository keeps a path elsewhere.
namespace Brimlo::GitCoverage {

/// A sentence that names the remote branch which holds everything at `path`, by the program at the
/// absolute path `git`.
///
/// Nullopt for the least doubt: no upstream or a local one, a commit not pushed (for a whole
/// repository, on any branch, or a stash), a file that is changed, untracked, ignored or not
/// watched for changes, a repository within. Runs nothing that the repository brings and reaches
/// for no network. Blocks for up to seven runs of git.
[[nodiscard]] std::optional<std::string> sentence(const std::string& git, const std::string& path);

}  // namespace Brimlo::GitCoverage
