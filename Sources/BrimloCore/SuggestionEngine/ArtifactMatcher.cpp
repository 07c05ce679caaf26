#include "BrimloCore/SuggestionEngine/ArtifactMatcher.h"

#include "BrimloCore/Support/Glob.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

namespace {

using Names = std::vector<std::string_view>;

/// Whether a wildcard matches one of the names; one without special characters is just compared.
bool matchesAny(const std::string& wildcard, const Names& names) {
    if (wildcard.find_first_of("*?[\\") == std::string::npos) {
        return std::ranges::find(names, wildcard) != names.end();
    }
    return std::ranges::any_of(
        names, [&](std::string_view name) { return Glob::matches(std::string{name}, wildcard); });
}

bool isProven(const ArtifactPattern& pattern, const Names& siblings) {
    return pattern.markers.empty() ||
           std::ranges::any_of(pattern.markers, [&](const std::string& marker) {
               return matchesAny(marker, siblings);
           });
}

bool isExcluded(const ArtifactPattern& pattern, std::string_view name) {
    return std::ranges::any_of(pattern.excludes, [&](const std::string& wildcard) {
        return matchesAny(wildcard, {name});
    });
}

}  // namespace

ArtifactMatcher::ArtifactMatcher(const std::vector<ArtifactPattern>& patterns)
    : patterns_(patterns) {
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        for (const std::string& name : patterns[i].names) {
            literals_[name].push_back(i);
            if (name.contains('*')) {
                wildcards_.emplace_back(name, i);
            }
        }
        for (const std::string& suffix : patterns[i].suffixes) {
            suffixes_.emplace_back(suffix, i);
        }
    }
}

std::vector<std::size_t> ArtifactMatcher::byName(std::string_view name) const {
    std::vector<std::size_t> found;
    if (const auto literal = literals_.find(name); literal != literals_.end()) {
        found = literal->second;
    }
    for (const auto& [suffix, pattern] : suffixes_) {
        if (name.ends_with(suffix)) {
            found.push_back(pattern);
        }
    }
    for (const auto& [wildcard, pattern] : wildcards_) {
        if (Glob::matches(std::string{name}, wildcard)) {
            found.push_back(pattern);
        }
    }
    std::ranges::sort(found);
    found.erase(std::ranges::unique(found).begin(), found.end());
    return found;
}

std::vector<const ArtifactPattern*> ArtifactMatcher::matches(
    std::string_view name, const Names& siblings) const {
    std::vector<const ArtifactPattern*> matching;
    for (const std::size_t index : byName(name)) {
        const ArtifactPattern& pattern = patterns_[index];
        if (!isExcluded(pattern, name) && isProven(pattern, siblings)) {
            matching.push_back(&pattern);
        }
    }
    return matching;
}

}  // namespace Brimlo
