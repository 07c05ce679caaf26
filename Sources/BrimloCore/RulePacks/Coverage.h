#pragma once

#include "BrimloCore/Models/Confidence.h"
#include "BrimloCore/Models/Persona.h"
#include "BrimloCore/Models/Risk.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo {

/// What the catalog knows of one tool.
struct CoverageEntry {
    std::string tool;
    std::string domain;  ///< The family of tools it belongs to.
    std::size_t ruleCount = 0;
    std::size_t artifactCount = 0;  ///< Project patterns.
    Confidence bestConfidence = Confidence::unverified;
    std::vector<Persona> personas;  ///< In the order of `kAllPersonas`.
    std::set<Risk> risks;

    /// Whether at least one rule is verified or documented.
    [[nodiscard]] bool isSupported() const { return Brimlo::isSupported(bestConfidence); }

    bool operator==(const CoverageEntry&) const = default;
};

/// The catalog by tool: how many rules each has, how well they are evidenced, and for whom.
namespace Coverage {

/// All tools by domain, then by name. Rules that the user added don't count; those that take a
/// built-in rule's place do. Reads the user's rules at each call.
[[nodiscard]] std::vector<CoverageEntry> entries();

/// "Supported", "Community" or "Unverified".
[[nodiscard]] std::string_view supportWord(const CoverageEntry& entry);

/// The entries as a document in Markdown, with what the words in it mean.
[[nodiscard]] std::string markdown();

}  // namespace Coverage

}  // namespace Brimlo
