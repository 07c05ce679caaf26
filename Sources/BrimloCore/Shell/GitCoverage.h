#pragma once

#include <optional>
#include <string>

/// Whether a git remote holds a path.
namespace Brimlo::GitCoverage {

/// A sentence naming the remote branch that holds everything at `path`, using the git at the
/// absolute path `git`.
///
/// Nullopt at the least doubt: no upstream or a local one, a commit not pushed (for a whole
/// repository on any branch, or a stash), a file that is changed, untracked, ignored or not watched
/// for changes, a nested repository. Runs no code of the repository and uses no network. Blocks for
/// up to seven runs of git.
[[nodiscard]] std::optional<std::string> sentence(const std::string& git, const std::string& path);

}  // namespace Brimlo::GitCoverage
