#pragma once

#include "BrimloCore/SuggestionEngine/Candidate.h"

#include <vector>

namespace Brimlo::SuggestionEngine {

/// The candidates that are left when no place may be offered twice, as itself or inside another:
/// the broader one stays, unless what lies inside it is safer. In the order of acceptance.
[[nodiscard]] std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates, const std::vector<Meta>& metas);

}  // namespace Brimlo::SuggestionEngine
