#pragma once

#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <vector>

namespace Brimlo::SuggestionEngine {

/// The items that a rule would clean now, with age but without size: in the order of the rule's
/// paths, then of their expansion. Unreadable and refused ones are left out.
[[nodiscard]] std::vector<SuggestionItem> targets(const CleanupRule& rule);

/// The same for one of many rules, which share one gate.
[[nodiscard]] std::vector<SuggestionItem> targets(
    const CleanupRule& rule, const Safety::Gate& gate);

/// The same items with sizes and without subtitles. Measures them in parallel; blocks until all are
/// done.
[[nodiscard]] std::vector<SuggestionItem> size(std::vector<SuggestionItem> items);

/// The sizes of these paths, measured in parallel.
[[nodiscard]] std::vector<SuggestionItem> size(const std::vector<std::string>& paths);

/// The items that a rule would match now, measured, largest first. Blocks.
[[nodiscard]] std::vector<SuggestionItem> preview(const CleanupRule& rule);

}  // namespace Brimlo::SuggestionEngine
