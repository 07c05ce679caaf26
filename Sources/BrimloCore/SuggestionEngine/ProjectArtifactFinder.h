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

/// Looks for the folders that the artifact patterns know, and for how long the project around
/// each has been idle.
namespace ProjectArtifactFinder {

/// Walks each root down to `maxDepth`, the root itself being depth 0. A folder may be found by
/// several patterns; what is found is not entered. What the safety gate refuses, and what is hidden
/// directly in the home folder, is a tool's own and nothing that a project built. Ends early, with
/// what it has, when `control` is cancelled. One thread.
[[nodiscard]] std::vector<FoundArtifact> find(
    const std::vector<std::string>& roots, int maxDepth, const ScanControl* control = nullptr);

/// Days since the latest change of the project's manifests, found among the names of its entries,
/// and of its repository; without either, of the folder itself.
[[nodiscard]] std::int64_t idleDays(
    const std::string& project, const std::vector<std::string_view>& siblings);

/// The git directory of the repository that `folder` lies in, at most ten levels up and not above
/// the home folder. Follows the file that worktrees and submodules have in its place.
[[nodiscard]] std::optional<std::string> gitDirectory(const std::string& folder);

}  // namespace ProjectArtifactFinder

}  // namespace Brimlo
