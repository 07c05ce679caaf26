#pragma once

#include "BrimloCore/SuggestionEngine/Candidate.h"

#include <vector>

namespace Brimlo::SuggestionEngine {

/// Removes candidates so that no place is offered twice, as itself or inside another: the broader
/// one stays, unless the inner one is safer. In order of acceptance.
[[nodiscard]] std::vector<Candidate> resolveOverlaps(
    std::vector<Candidate> candidates, const std::vector<Meta>& metas);

}  // namespace Brimlo::SuggestionEngine
