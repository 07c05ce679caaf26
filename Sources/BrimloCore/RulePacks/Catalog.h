#pragma once

#include "BrimloCore/Models/ArtifactPattern.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <string>
#include <vector>

/// All rules and project patterns, each id once: the compiled rows, the packs, and the user's own
/// rules.
namespace Brimlo::Catalog {

/// All rules except the user's. Made once per process. A broad rule (`isCatchAll`) also excludes
/// each name in its folder that another rule knows, itself or a place in it. The rules also look
/// where environment variables have moved their places (`MovedFolders`); the user's don't.
[[nodiscard]] const std::vector<CleanupRule>& builtInRules();

/// All rules, including switched-off ones. Reads the user's rules at each call.
[[nodiscard]] std::vector<CleanupRule> rules();

/// The rules of `all` that can find something on this system: the user's own, and those with a
/// place that this system has.
[[nodiscard]] std::vector<CleanupRule> ofThisSystem(std::vector<CleanupRule> all);

/// The problems of the user's rules. Reads them at each call.
[[nodiscard]] std::vector<std::string> userRuleIssues();

/// The problems of the packs.
[[nodiscard]] const std::vector<std::string>& packIssues();

/// All patterns for build output in projects. Made once per process.
[[nodiscard]] const std::vector<ArtifactPattern>& artifactPatterns();

/// What is known of a row on this system, in a sentence: the experiments that prove it, or what it
/// rests on without any. Empty for a rule of the user's.
[[nodiscard]] std::string evidence(const CleanupRule& rule);
[[nodiscard]] std::string evidence(const ArtifactPattern& pattern);

/// Whether weak evidence costs a rule the rating that lets it be preselected.
enum class UnsupportedSafe { keep, lowerToRebuild };

/// Each id once, at its first place, with its last content. What an experiment proves on this
/// system has no weak evidence.
[[nodiscard]] std::vector<CleanupRule> merge(
    std::vector<CleanupRule> rules, UnsupportedSafe unsupported);

}  // namespace Brimlo::Catalog
