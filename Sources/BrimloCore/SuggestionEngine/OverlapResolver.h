#pragma once

#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <string>
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

/// Places that are left alone: neither they, nor what lies in them, nor what holds them is offered.
struct Spared {
    std::vector<std::string> always;         ///< By no rule.
    std::vector<std::string> fromCatchAlls;  ///< Not by a broad rule.
};

/// Removes candidates so that no place on disk is offered twice, as itself or inside another. The
/// broader candidate stays, unless the inner one is safer. What touches a spared place is then
/// removed, and nothing comes in its stead. In order of acceptance.
///
/// Compares places, not paths: symlinks, bind mounts and letter case give one folder several paths.
/// Reads the status of each folder on the way to a candidate, once.
[[nodiscard]] std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates,
    const std::vector<PendingSuggestion>& pending,
    const Spared& spared = {});

}  // namespace Brimlo::SuggestionEngine
