#pragma once

#include "BrimloCore/Catalog/ArtifactCatalog.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Persona.h"
#include "BrimloCore/Models/Risk.h"

#include <cstddef>
#include <string>
#include <vector>

/// All rules: the compiled tables, the packs and the user's own, each id once.
namespace Brimlo::Catalog {

/// All rules except the user's. Made once per process.
[[nodiscard]] const std::vector<CleanupRule>& builtInRules();

/// All rules, including switched-off ones. Reads the user's rules at each call.
[[nodiscard]] std::vector<CleanupRule> rules();

/// The problems of the user's rules. Reads them at each call.
[[nodiscard]] std::vector<std::string> userRuleIssues();

/// The packs read, and their problems.
[[nodiscard]] const std::vector<std::string>& packNames();
[[nodiscard]] const std::vector<std::string>& packIssues();

/// The compiled project patterns and those of the packs, each id once: at its first place, with its
/// last content. Made once per process.
[[nodiscard]] const std::vector<ArtifactPattern>& artifactPatterns();
[[nodiscard]] std::size_t artifactPatternCount();

/// The fields of a pattern that a list shows.
struct ArtifactSummary {
    std::string id;
    std::string name;
    std::string group;
    std::vector<Persona> personas;
    Risk risk = Risk::review;
};
[[nodiscard]] std::vector<ArtifactSummary> artifactSummaries();

/// Whether weak evidence costs a rule the rating that lets it be preselected.
enum class UnsupportedSafe { keep, lowerToRebuild };

/// Each id once, at its first place, with its last content.
[[nodiscard]] std::vector<CleanupRule> merge(
    std::vector<CleanupRule> rules, UnsupportedSafe unsupported);

}  // namespace Brimlo::Catalog
