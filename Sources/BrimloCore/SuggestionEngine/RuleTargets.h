#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"
#include "BrimloCore/Support/Safety.h"

#include <vector>

namespace Brimlo::SuggestionEngine {

/// What a rule would clean now, with its age and without its size: in the order of the rule's
/// paths, then of their expansion. What can't be read or may not be touched is left out.
[[nodiscard]] std::vector<SuggestionItem> targets(const CleanupRule& rule);

/// The same for one of many rules, which share one look at what may not be touched.
[[nodiscard]] std::vector<SuggestionItem> targets(
    const CleanupRule& rule, const Safety::Gate& gate);

/// The same items with their sizes and without their subtitles. Measures them in parallel; blocks
/// until all are done.
[[nodiscard]] std::vector<SuggestionItem> size(std::vector<SuggestionItem> items);

/// The sizes of these paths, likewise.
[[nodiscard]] std::vector<SuggestionItem> size(const std::vector<std::string>& paths);

}  // namespace Brimlo::SuggestionEngine

namespace Brimlo::UserRules {

/// What a rule would match now, measured, the largest first. Stands here and not with the user's
/// rules because it takes the engine's eyes. Blocks.
[[nodiscard]] std::vector<SuggestionItem> preview(const CleanupRule& rule);

}  // namespace Brimlo::UserRules
