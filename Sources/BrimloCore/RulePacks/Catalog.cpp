#include "BrimloCore/RulePacks/Catalog.h"

#include "BrimloCore/RulePacks/RulePacks.h"
#include "BrimloCore/UserRules/UserRules.h"

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

}  // namespace

namespace Catalog {

const std::vector<CleanupRule>& builtInRules() {
    static const std::vector<CleanupRule> kRules = [] {
        std::vector<CleanupRule> rules = RulePacks::compiledRules();
        append(rules, packs().rules);
        return merge(std::move(rules), UnsupportedSafe::lowerToRebuild);
    }();
    return kRules;
}

std::vector<CleanupRule> rules() {
    std::vector<CleanupRule> rules = builtInRules();
    for (CleanupRule& rule : UserRules::load(UserRules::defaultDirectory()).rules) {
        rule.isUsersOwn = true;
        rules.push_back(std::move(rule));
    }
    return merge(std::move(rules), UnsupportedSafe::keep);
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

std::vector<CleanupRule> merge(std::vector<CleanupRule> rules, UnsupportedSafe unsupported) {
    if (unsupported == UnsupportedSafe::lowerToRebuild) {
        for (CleanupRule& rule : rules) {
            if (rule.risk == Risk::safe && !isSupported(rule.confidence)) {
                rule.risk = Risk::rebuild;
            }
        }
    }
    return lastOfEachID(std::move(rules));
}

}  // namespace Catalog

}  // namespace Brimlo
