#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rule packs embedded in the program.
namespace Brimlo::RulePacks {

/// An embedded pack: its file name and its JSON text.
struct Source {
    std::string_view fileName;
    std::string_view text;
};

/// All embedded packs, in no particular order.
[[nodiscard]] std::span<const Source> embedded();

struct Loaded {
    std::vector<CleanupRule> rules;
    std::vector<ArtifactPattern> artifacts;
    std::vector<std::string> names;   ///< The packs read, by their own names.
    std::vector<std::string> issues;  ///< What could not be read, and where.
};

/// Reads packs in the order of their file names. An unreadable pack contributes nothing; a bad
/// element is missing alone.
[[nodiscard]] Loaded load(std::span<const Source> sources = embedded());

}  // namespace Brimlo::RulePacks
