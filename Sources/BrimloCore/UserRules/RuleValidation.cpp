#include "BrimloCore/UserRules/RuleValidation.h"

#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <optional>

namespace Brimlo {

std::string RuleValidation::joinedErrors(std::string_view separator) const {
    std::string result;
    for (const std::string& error : errors) {
        result += result.empty() ? "" : separator;
        result += error;
    }
    return result;
}

namespace UserRules {

namespace {

constexpr std::string_view kProtected = "protected location";

/// Marks the warnings that demand the rating Review.
constexpr std::string_view kPersonalFolder = "personal folder";

bool isPlainLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool isValidID(std::string_view id) {
    const auto isAllowed = [](char c) {
        return isPlainLetter(c) || c == '.' || c == '_' || c == '-';
    };
    return !id.empty() && isPlainLetter(id.front()) && std::ranges::all_of(id, isAllowed) &&
           !id.contains("..");
}

/// A path that the pattern matches, with an "x" for each wildcard.
std::string example(const Glob::Pattern& pattern) {
    std::string path = pattern.fixed;
    for (const Glob::Pattern::Component& component : pattern.rest) {
        path = Path::join(path, component.isWild ? "x" : component.text);
    }
    return path;
}

void validatePath(std::string_view written, bool contentsOnly, RuleValidation& result) {
    const std::string path{Text::trimmed(written)};
    const auto fail = [&](std::string_view words) {
        result.errors.push_back(path + std::string{words});
    };
    if (path.empty()) {
        return fail("A path is empty.");
    }
    if (StoragePaths::expandTilde(path).size() >= PATH_MAX) {
        result.errors.emplace_back("A path is longer than the system allows.");
        return;
    }
    if (!path.starts_with('~') && !path.starts_with('/')) {
        return fail(": use a full path starting with ~/ or /.");
    }
    const Glob::Pattern pattern = Glob::parse(path);
    if (pattern.goesUp) {
        return fail(": '..' is not allowed.");
    }
    const std::string& fixed = pattern.fixed;
    const bool isWild = !pattern.rest.empty();
    const std::string home = StoragePaths::home();
    if (fixed == "/" || fixed == home || fixed == Path::resolved(home)) {
        return fail(
            ": too broad. Point at a specific folder or file, not the whole disk or your home "
            "folder.");
    }
    const auto refusal = [](const std::string& target) {
        return Safety::judge(target, Safety::Chosen::byRule).refusal;
    };
    if (!isWild) {
        if (const auto reason = refusal(fixed)) {
            return fail(": Brimlo never deletes this location (" + *reason + ").");
        }
    }
    if (isWild || contentsOnly) {
        const std::string matched = example(pattern);
        if (const auto reason = refusal(contentsOnly ? Path::join(matched, "x") : matched)) {
            return fail(": matches inside a location Brimlo never touches (" + *reason + ").");
        }
        if (Safety::judge(fixed).refusal == kProtected) {
            result.warnings.push_back(
                path +
                " lists everything inside a personal folder. Treat this rule as Review and check "
                "the list carefully.");
        }
    }
}

/// Conditions only narrow a rule, but a misspelled one would make it find nothing for ever.
void validateConditions(const MatchConditions& conditions, RuleValidation& result) {
    for (const std::string& name : conditions.beside) {
        if (name.empty() || name == "." || name == ".." || name.contains('/')) {
            result.errors.push_back(name + ": what must be beside a match is a plain name.");
        }
    }
    for (const auto* paths : {&conditions.owners, &conditions.ownerFiles}) {
        for (const std::string& path : *paths) {
            if (!StoragePaths::expandTilde(path).starts_with('/')) {
                result.errors.push_back(path + ": use a full path starting with ~/ or /.");
            }
        }
    }
}

bool isProtectedFolder(std::string_view path) {
    const Glob::Pattern pattern = Glob::parse(path);
    return pattern.rest.empty() && Safety::judge(pattern.fixed).refusal == kProtected;
}

}  // namespace

RuleValidation validate(const CleanupRule& rule) {
    RuleValidation result;
    if (!isValidID(rule.id)) {
        result.errors.emplace_back(
            "The rule id may only contain letters, digits, '.', '_' and '-'.");
    }
    if (Text::trimmed(rule.name).empty()) {
        result.errors.emplace_back("Give the rule a name.");
    }
    constexpr std::size_t kShortestSentence = 10;
    if (Text::characterCount(Text::trimmed(rule.regenerates)) < kShortestSentence) {
        result.errors.emplace_back(
            "Describe in a sentence what happens after deletion (what recreates it, or that it "
            "will be gone).");
    }
    if (rule.paths.empty()) {
        result.errors.emplace_back("Add at least one path.");
    }
    for (const std::string& path : rule.paths) {
        validatePath(path, rule.contentsOnly, result);
    }
    validateConditions(rule.conditions, result);
    if (rule.contentsOnly && std::ranges::any_of(rule.paths, isProtectedFolder)) {
        result.warnings.emplace_back(
            "Contents-only on a personal folder removes everything inside it.");
    }
    const auto isPersonal = [](std::string_view text) { return text.contains(kPersonalFolder); };
    if (rule.risk != Risk::review && std::ranges::any_of(result.warnings, isPersonal)) {
        result.errors.emplace_back(
            "Rules that match everything inside Documents, Desktop, Downloads, Pictures, Movies "
            "or Music must be rated Review.");
    }
    return result;
}

}  // namespace UserRules

}  // namespace Brimlo
