#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Models/ArtifactPattern.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// A folder of build output inside a project.
struct FoundArtifact {
    const ArtifactPattern* pattern = nullptr;  ///< One of the catalog's, which last.
    std::string path;
    std::string projectPath;    ///< The folder that contains it.
    std::int64_t idleDays = 0;  ///< Days since the project's last activity.

    bool operator==(const FoundArtifact&) const = default;
};

/// Finds the folders that the artifact patterns match, and how long the project around each has
/// been idle.
namespace ProjectArtifactFinder {

/// Walks each root down to `maxDepth`, the root itself being depth 0. The matches of a folder
/// follow one another, in the order of the patterns; a matched folder is not entered. What the
/// safety gate refuses, and hidden folders directly in the home folder, are skipped: those are a
/// tool's own. Ends early, with the matches so far, when `control` is cancelled. One thread.
[[nodiscard]] std::vector<FoundArtifact> find(
    const std::vector<std::string>& roots, int maxDepth, const ScanControl* control = nullptr);

/// Whether the walk never enters a folder of this name: a hidden one, a tool's cache, a bundle.
[[nodiscard]] bool isSkipped(std::string_view name);

}  // namespace ProjectArtifactFinder

}  // namespace Brimlo
