#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rule packs embedded in the program.
namespace Brimlo::RulePacks {

/// A pack as it is carried: the name of its file and its JSON text.
struct Source {
    std::string_view fileName;
    std::string_view text;
};

/// All packs of the program, in no particular order.
[[nodiscard]] std::span<const Source> embedded();

struct Loaded {
    std::vector<CleanupRule> rules;
    std::vector<ArtifactPattern> artifacts;
    std::vector<std::string> names;   ///< The packs that were read, by their own names.
    std::vector<std::string> issues;  ///< What could not be read, and where.
};

/// Reads packs in the order of their files' names. A pack that can't be read at all contributes
/// nothing, a bad element only itself is missing.
[[nodiscard]] Loaded load(std::span<const Source> sources = embedded());

}  // namespace Brimlo::RulePacks
