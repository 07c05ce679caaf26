#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <vector>

/// The compiled rules for people who write software. In force where no pack replaces them.
namespace Brimlo::CatalogDeveloper {

[[nodiscard]] const std::vector<CleanupRule>& all();

}  // namespace Brimlo::CatalogDeveloper
