#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <vector>

/// The compiled rules for film, music, photographs and design. In force where no pack replaces
/// them.
namespace Brimlo::CatalogCreative {

[[nodiscard]] const std::vector<CleanupRule>& all();

}  // namespace Brimlo::CatalogCreative
