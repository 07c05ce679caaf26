#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/UserRules/RuleValidation.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The user's own rules: one JSON file a rule, in a folder. The folder is the only copy; every
/// reader loads it anew.
namespace Brimlo::UserRules {

/// The prefix of the ids of the user's own rules.
inline constexpr std::string_view kIDPrefix = "custom.";

[[nodiscard]] bool isCustom(std::string_view id);

/// The folder of the user's rules; created if missing, failures are ignored.
[[nodiscard]] std::string defaultDirectory();

struct Loaded {
    std::vector<CleanupRule> rules;   ///< In the order of the files' names, then within the file.
    std::vector<std::string> issues;  ///< What could not be read or is invalid, and where.
};

/// The valid rules in all ".json" files of a folder. A missing folder has none.
[[nodiscard]] Loaded load(const std::string& directory);

/// Writes a rule to its file, replacing an earlier one of the same id.
///
/// Fails with code 10 of the domain "Brimlo" and the errors, one a line, when the rule is invalid
/// or holds what JSON can't represent.
[[nodiscard]] std::expected<void, Error> save(
    const CleanupRule& rule, const std::string& directory);

/// The same for many rules, much faster. None is saved unless all can be written, so a full disk
/// leaves the folder unchanged.
[[nodiscard]] std::expected<void, Error> saveAll(
    const std::vector<CleanupRule>& rules, const std::string& directory);

/// Deletes a rule's file for good; fails when there is none. An id that could lead out of the
/// folder is ignored.
[[nodiscard]] std::expected<void, Error> remove(std::string_view id, const std::string& directory);

/// The author's input for a rule.
struct Draft {
    std::optional<std::string> id;  ///< Made from the name when absent.
    std::string name;
    std::optional<std::string> group;  ///< The name when absent or empty.
    std::vector<std::string> paths;
    Risk risk = Risk::review;
    std::string regenerates;
    std::vector<std::string> quitApps;
    bool contentsOnly = false;
    std::vector<std::string> excludes;
    std::optional<std::int64_t> minAgeDays;
    std::optional<std::string> officialCommand;
    std::vector<Persona> personas;
    MatchConditions conditions;
};

/// A rule from the author's input: its paths in tilde form, with the evidence of a report.
[[nodiscard]] CleanupRule make(Draft draft);

/// The path with the home folder written as "~".
[[nodiscard]] std::string tildeForm(std::string_view path);

/// The part of an id made from a text: lower-case letters a to z without accents, and digits, with
/// single hyphens for everything else in between; at most 40 characters. "rule" when nothing is
/// left.
[[nodiscard]] std::string slug(std::string_view text);

/// An unused id for a new rule of this name: "custom.", its slug, and four random hex digits, or
/// more where four are taken.
[[nodiscard]] std::string newID(std::string_view name);

}  // namespace Brimlo::UserRules
