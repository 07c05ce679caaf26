#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rows that ship with the program: the embedded packs, and the compiled rows of one pack.
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
    std::vector<std::string> issues;  ///< What could not be read, and where.
};

/// Reads packs in the order of their file names, those for this system alone behind the others, and
/// leaves out those for another system. An unreadable pack contributes nothing; a bad element is
/// missing alone.
[[nodiscard]] Loaded load(std::span<const Source> sources = embedded());

/// The rows of the pack "audit-builtin" without their evidence, in its order. They need no decoder:
/// each is in force where the pack does not replace it.
[[nodiscard]] std::vector<CleanupRule> compiledRules();
[[nodiscard]] std::vector<ArtifactPattern> compiledArtifacts();

}  // namespace Brimlo::RulePacks
