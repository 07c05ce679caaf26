#include "BrimloCore/SuggestionEngine/RuleTargets.h"

#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Support/Days.h"
#include "BrimloCore/Support/Folders.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/ParallelFor.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>
#include <string>
#include <utility>

#include <sys/stat.h>

namespace Brimlo::SuggestionEngine {

namespace {

bool isExcluded(const std::string& name, const CleanupRule& rule) {
    return std::ranges::any_of(
        rule.excludes, [&](const std::string& pattern) { return Glob::matches(name, pattern); });
}

/// Whether a rule may take one of its expanded paths, or what lies in it.
bool mayTake(const std::string& path, const CleanupRule& rule, const Safety::Gate& gate) {
    const auto isRefused = [&](const std::string& item) {
        return gate.judge(item, Safety::Chosen::byRule).refusal.has_value();
    };
    // By the path alone a link may go, but not what lies behind it.
    return !isRefused(path) && !(rule.contentsOnly && isRefused(path + "/x"));
}

/// The entries that a rule means by one of its expanded paths.
std::vector<std::string> entries(const std::string& path, const CleanupRule& rule) {
    if (!rule.contentsOnly) {
        return {path};
    }
    std::vector<std::string> entries;
    for (const std::string& name : Folders::names(path).value_or(std::vector<std::string>{})) {
        if (!isExcluded(name, rule)) {
            entries.push_back(path + "/" + name);
        }
    }
    return entries;
}

}  // namespace

std::vector<SuggestionItem> targets(const CleanupRule& rule) {
    return targets(rule, Safety::Gate{});
}

std::vector<SuggestionItem> targets(const CleanupRule& rule, const Safety::Gate& gate) {
    const std::time_t now = std::time(nullptr);
    std::vector<SuggestionItem> items;
    for (const std::string& pattern : rule.paths) {
        for (const std::string& path : Glob::expand(pattern)) {
            if (!mayTake(path, rule, gate)) {
                continue;
            }
            for (std::string& entry : entries(path, rule)) {
                struct stat status {};
                const bool exists = lstat(entry.c_str(), &status) == 0;
                const bool isTooYoung =
                    rule.minAgeDays && status.st_mtime > Days::before(now, *rule.minAgeDays);
                if (exists && !isTooYoung) {
                    items.push_back({
                        .path = std::move(entry),
                        .idleDays = Days::since(status.st_mtime, now),
                    });
                }
            }
        }
    }
    return items;
}

std::vector<SuggestionItem> size(std::vector<SuggestionItem> items) {
    // Each call writes to an element of its own, so no lock is needed.
    parallelFor(items.size(), [&](std::size_t i) {
        items[i].size = DiskScanner::quickSize(items[i].path);
        items[i].subtitle.reset();
    });
    return items;
}

std::vector<SuggestionItem> size(const std::vector<std::string>& paths) {
    std::vector<SuggestionItem> items;
    items.reserve(paths.size());
    for (const std::string& path : paths) {
        items.push_back({.path = path});
    }
    return size(std::move(items));
}

std::vector<SuggestionItem> preview(const CleanupRule& rule) {
    std::vector<SuggestionItem> items = size(targets(rule));
    std::ranges::stable_sort(items, std::ranges::greater{}, &SuggestionItem::size);
    return items;
}

}  // namespace Brimlo::SuggestionEngine
