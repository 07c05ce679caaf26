#include "BrimloCore/RulePacks/Catalog.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/RulePacks/RulePacks.h"
#include "BrimloCore/Support/MovedFolders.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Brimlo {

namespace {

/// The packs, read once per process.
const RulePacks::Loaded& packs() {
    static const RulePacks::Loaded kLoaded = RulePacks::load();
    return kLoaded;
}

template <typename T>
void append(std::vector<T>& list, const std::vector<T>& more) {
    list.insert(list.end(), more.begin(), more.end());
}

/// Each id once, at its first place, with its last content.
template <typename T>
std::vector<T> lastOfEachID(std::vector<T> elements) {
    std::vector<T> result;
    result.reserve(elements.size());
    std::unordered_map<std::string, std::size_t> places;
    for (T& element : elements) {
        const auto [place, isNew] = places.try_emplace(element.id, result.size());
        if (isNew) {
            result.push_back(std::move(element));
        } else {
            result[place->second] = std::move(element);
        }
    }
    return result;
}

/// Cuts the first component off `path`, and the slash after it.
std::string_view cutComponent(std::string_view& path) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view component = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return component;
}

/// The component of the pattern `path` that stands in the folder `folder`, itself a pattern; empty
/// if `path` is not below it, and for a wildcard that stands for any name.
std::string_view nameIn(std::string_view folder, std::string_view path) {
    while (!folder.empty()) {
        const std::string_view wanted = cutComponent(folder);
        const std::string_view component = cutComponent(path);
        if (wanted != component && wanted != "*") {
            return {};
        }
    }
    const std::string_view name = cutComponent(path);
    return name == "*" ? std::string_view{} : name;
}

/// Makes each broad rule leave alone the folders of which another rule knows a part: only that rule
/// can say what of them may go.
void narrowCatchAlls(std::vector<CleanupRule>& rules) {
    for (CleanupRule& broad : rules) {
        if (!broad.isCatchAll || !broad.contentsOnly) {
            continue;
        }
        std::set<std::string, std::less<>> names;
        for (const CleanupRule& rule : rules) {
            for (const std::string& path :
                 rule.isCatchAll ? std::vector<std::string>{} : rule.paths) {
                for (const std::string& folder : broad.paths) {
                    names.emplace(nameIn(folder, path));
                }
            }
        }
        names.erase("");
        for (const std::string& name : broad.excludes) {
            names.erase(name);
        }
        broad.excludes.insert(broad.excludes.end(), names.begin(), names.end());
    }
}

/// The sentence for what experiments on this system prove; nullopt without any.
std::optional<std::string> proof(const std::vector<Experiment>& provenOn) {
    std::string programs;
    for (const Experiment& each : ofSystem(provenOn, Platform::systemName())) {
        programs += (programs.empty() ? "" : ", ") + each.program + " (" + each.date + ")";
    }
    if (programs.empty()) {
        return std::nullopt;
    }
    return "Proven on " + std::string{Platform::systemLabel()} + " by experiment, with " +
           programs + ": used, cleaned, and used again.";
}

/// What a row rests on that no experiment on this system proves.
std::string unproven(std::string_view basis) {
    return std::string{basis} + " No experiment on " + std::string{Platform::systemLabel()} +
           " has proven it yet.";
}

std::string_view basis(Confidence confidence) {
    switch (confidence) {
        case Confidence::verifiedLocal:
            return "Checked on a real Mac.";
        case Confidence::documented:
            return "The maker's documentation says so.";
        case Confidence::community:
            return "Widely reported.";
        case Confidence::unverified:
            break;
    }
    return "General knowledge.";
}

}  // namespace

namespace Catalog {

const std::vector<CleanupRule>& builtInRules() {
    static const std::vector<CleanupRule> kRules = [] {
        std::vector<CleanupRule> rules = RulePacks::compiledRules();
        append(rules, packs().rules);
        rules = merge(std::move(rules), UnsupportedSafe::lowerToRebuild);
        const std::vector<MovedFolders::Move> moves = MovedFolders::ofEnvironment();
        for (CleanupRule& rule : rules) {
            MatchConditions& conditions = rule.conditions;
            for (auto* paths : {&rule.paths, &conditions.owners, &conditions.ownerFiles}) {
                *paths = MovedFolders::withMoved(std::move(*paths), moves);
            }
        }
        narrowCatchAlls(rules);
        return rules;
    }();
    return kRules;
}

std::vector<CleanupRule> rules() {
    std::vector<CleanupRule> rules = builtInRules();
    for (CleanupRule& rule : UserRules::load(UserRules::defaultDirectory()).rules) {
        rule.isUsersOwn = true;
        rules.push_back(std::move(rule));
    }
    rules = merge(std::move(rules), UnsupportedSafe::keep);
    narrowCatchAlls(rules);
    return rules;
}

std::vector<CleanupRule> ofThisSystem(std::vector<CleanupRule> all) {
    std::erase_if(all, [](const CleanupRule& rule) {
        return !rule.isUsersOwn && std::ranges::all_of(rule.paths, Platform::isOfAnotherSystem);
    });
    return all;
}

std::vector<std::string> userRuleIssues() {
    return UserRules::load(UserRules::defaultDirectory()).issues;
}

const std::vector<std::string>& packIssues() {
    return packs().issues;
}

const std::vector<ArtifactPattern>& artifactPatterns() {
    static const std::vector<ArtifactPattern> kPatterns = [] {
        std::vector<ArtifactPattern> patterns = RulePacks::compiledArtifacts();
        append(patterns, packs().artifacts);
        return lastOfEachID(std::move(patterns));
    }();
    return kPatterns;
}

std::string evidence(const CleanupRule& rule) {
    if (rule.isUsersOwn) {
        return {};
    }
    return proof(rule.provenOn).value_or(unproven(basis(rule.confidence)));
}

std::string evidence(const ArtifactPattern& pattern) {
    return proof(pattern.provenOn)
        .value_or(unproven("Known by the folder's name and what is beside it."));
}

std::vector<CleanupRule> merge(std::vector<CleanupRule> rules, UnsupportedSafe unsupported) {
    if (unsupported == UnsupportedSafe::lowerToRebuild) {
        for (CleanupRule& rule : rules) {
            const bool isWeak = !isSupported(rule.confidence) &&
                                ofSystem(rule.provenOn, Platform::systemName()).empty();
            if (rule.risk == Risk::safe && isWeak) {
                rule.risk = Risk::rebuild;
            }
        }
    }
    return lastOfEachID(std::move(rules));
}

}  // namespace Catalog

}  // namespace Brimlo
