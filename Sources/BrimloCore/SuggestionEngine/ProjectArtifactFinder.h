#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// A folder of build output inside a project.
struct FoundArtifact {
    std::string patternID;
    std::string path;
    std::string projectPath;    ///< The folder that contains it.
    std::int64_t idleDays = 0;  ///< Days since the project's last activity.

    bool operator==(const FoundArtifact&) const = default;
};

/// Finds the folders that the artifact patterns match, and how long the project around each has
/// been idle.
namespace ProjectArtifactFinder {

/// Walks each root down to `maxDepth`, the root itself being depth 0. Several patterns may match a
/// folder; a match is not entered. What the safety gate refuses, and hidden folders directly in the
/// home folder, are skipped: those are a tool's own. Ends early, with the matches so far, when
/// `control` is cancelled. One thread.
[[nodiscard]] std::vector<FoundArtifact> find(
    const std::vector<std::string>& roots, int maxDepth, const ScanControl* control = nullptr);

/// Days since the last change of the project's manifests, found among the names of its entries, and
/// of its repository; without either, of the folder itself.
[[nodiscard]] std::int64_t idleDays(
    const std::string& project, const std::vector<std::string_view>& siblings);

/// The git directory of the repository of `folder`, at most ten levels up and not above the home
/// folder. Follows the ".git" file of worktrees and submodules.
[[nodiscard]] std::optional<std::string> gitDirectory(const std::string& folder);

}  // namespace ProjectArtifactFinder

}  // namespace Brimlo
