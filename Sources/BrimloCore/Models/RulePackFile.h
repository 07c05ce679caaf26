#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Lossy.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// A JSON document of rules: an embedded pack, a user rule file or an exported file.
struct RulePackFile {
    std::string pack;                     ///< The pack's name.
    std::optional<std::int64_t> version;  ///< Read and not used.
    std::optional<std::vector<Lossy<CleanupRule>>> rules;
    std::optional<std::vector<Lossy<ArtifactPattern>>> artifacts;
};

}  // namespace Brimlo
