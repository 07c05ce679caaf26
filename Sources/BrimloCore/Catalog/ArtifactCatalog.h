#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"

#include <vector>

/// The patterns by which build output inside projects is known.
namespace Brimlo::ArtifactCatalog {

/// The compiled patterns. In force where no pack replaces them.
[[nodiscard]] const std::vector<ArtifactPattern>& builtIn();

}  // namespace Brimlo::ArtifactCatalog
