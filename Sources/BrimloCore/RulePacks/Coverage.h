#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// The catalog's knowledge of one tool.
struct CoverageEntry {
    std::string tool;
    std::string domain;  ///< Its family of tools.
    std::size_t ruleCount = 0;
    std::size_t artifactCount = 0;  ///< Project patterns.
    Confidence bestConfidence = Confidence::unverified;
    std::vector<Persona> personas;  ///< In the order of `kAllPersonas`.
    std::set<Risk> risks;

    /// Whether at least one rule is verified or documented.
    [[nodiscard]] bool isSupported() const { return Brimlo::isSupported(bestConfidence); }

    bool operator==(const CoverageEntry&) const = default;
};

/// The catalog by tool: the number of rules of each, their evidence, and their audiences.
namespace Coverage {

/// All tools by domain, then by name, with the rules of this system. Rules added by the user don't
/// count; those that replace a built-in rule do. Reads the user's rules at each call.
[[nodiscard]] std::vector<CoverageEntry> entries();

/// "Supported", "Community" or "Unverified".
[[nodiscard]] std::string_view supportWord(const CoverageEntry& entry);

/// The entries as a Markdown document, with a legend.
[[nodiscard]] std::string markdown();

}  // namespace Coverage

}  // namespace Brimlo
