#pragma once

#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <vector>

namespace Brimlo::SuggestionEngine {

/// A suggestion under construction: one for each rule or pattern that matches anything.
struct PendingSuggestion {
    Suggestion suggestion;    ///< Without items.
    bool isArtifact = false;  ///< From a project pattern, not from a rule.
    bool isCatchAll = false;  ///< From the broad rule that yields to specific ones.
};

/// A path that may become an item of a suggestion.
struct Candidate {
    std::size_t suggestion = 0;  ///< Index into the list of pending suggestions.
    SuggestionItem item;
    bool isFolder = true;  ///< Or unknown; not yet measured.
};

/// Removes candidates so that no place on disk is offered twice, as itself or inside another. The
/// broader candidate stays, unless the inner one is safer. In order of acceptance.
///
/// Compares places, not paths: symlinks, bind mounts and letter case give one folder several paths.
/// Reads the status of each folder on the way to a candidate, once.
[[nodiscard]] std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates, const std::vector<PendingSuggestion>& pending);

}  // namespace Brimlo::SuggestionEngine
