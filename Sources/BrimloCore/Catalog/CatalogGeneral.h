#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <vector>

/// The compiled rules for everyone. In force where no pack replaces them.
namespace Brimlo::CatalogGeneral {

[[nodiscard]] const std::vector<CleanupRule>& all();

}  // namespace Brimlo::CatalogGeneral
