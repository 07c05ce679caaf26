#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include "BrimloCore/Support/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <tuple>

namespace Brimlo {
namespace {

using SuggestionEngine::Candidate;
using SuggestionEngine::PendingSuggestion;
using SuggestionEngine::resolveOverlaps;
using Texts = std::vector<std::string>;

const Texts kNames{"safe", "rebuild", "review", "safeCatchAll"};

const std::vector<PendingSuggestion> kPending{
    {.suggestion = {.risk = Risk::safe}},
    {.suggestion = {.risk = Risk::rebuild}},
    {.suggestion = {.risk = Risk::review}},
    {.suggestion = {.risk = Risk::safe}, .isCatchAll = true},
};

/// A candidate whose idle days number it, so that equal ones can be told apart.
Candidate candidate(std::size_t suggestion, const std::string& path, std::size_t number) {
    return {
        suggestion, {.path = path, .idleDays = static_cast<std::int64_t>(number)}
    };
}

/// The candidates in a text such as "safe /a, review /b".
std::vector<Candidate> parsed(const std::string& text) {
    std::vector<Candidate> candidates;
    std::istringstream words{text};
    for (std::string name, path; words >> name >> path;) {
        const auto place = std::ranges::find(kNames, name) - kNames.begin();
        path.resize(path.size() - (path.ends_with(',') ? 1 : 0));
        candidates.push_back(candidate(static_cast<std::size_t>(place), path, candidates.size()));
    }
    return candidates;
}

std::string described(const std::vector<Candidate>& candidates) {
    std::string text;
    for (const Candidate& c : candidates) {
        text += (text.empty() ? "" : ", ") + kNames[c.suggestion] + " " + c.item.path + " #" +
                std::to_string(c.item.idleDays.value_or(-1));
    }
    return text;
}

TEST(OverlapResolverTest, OffersNoPathTwice) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"the riskier part goes",    "review /x/y, safe /x",                 "safe /x #1"    },
        {"one path, lower risk",     "review /x, rebuild /x",                "rebuild /x #1" },
        {"a named rule wins",        "safeCatchAll /x, review /x",           "review /x #1"  },
        {"a catch-all never evicts", "review /x, safeCatchAll /x/y",         "review /x #0"  },
        {"one after another",        "review /x, rebuild /x/y, safe /x/y/z", "safe /x/y/z #2"},
    };
    for (const auto& [name, candidates, kept] : cases) {
        EXPECT_EQ(described(resolveOverlaps(parsed(candidates), kPending)), kept) << name;
    }
}

// The second implementation is written to be read: it sorts by three passes, the least important
// key first, and asks each kept candidate whether it lies above.

bool isAtOrAbove(const std::string& upper, const std::string& path) {
    return path == upper || path.starts_with(upper + "/");
}

std::vector<Candidate> slowlyResolved(
    std::vector<Candidate> candidates, const std::vector<PendingSuggestion>& pending) {
    const auto risk = [&](const Candidate& c) { return pending[c.suggestion].suggestion.risk; };
    const auto isSpecific = [&](const Candidate& c) { return !pending[c.suggestion].isCatchAll; };
    std::stable_sort(candidates.begin(), candidates.end(), [&](const auto& a, const auto& b) {
        return risk(a) < risk(b);
    });
    std::stable_partition(candidates.begin(), candidates.end(), isSpecific);
    std::stable_sort(candidates.begin(), candidates.end(), [](const auto& a, const auto& b) {
        return Text::characterCount(a.item.path) < Text::characterCount(b.item.path);
    });
    std::vector<Candidate> result;
    for (const Candidate& c : candidates) {
        auto nearest = result.end();
        for (auto kept = result.begin(); kept != result.end(); ++kept) {
            if (isAtOrAbove(kept->item.path, c.item.path) &&
                (nearest == result.end() || kept->item.path.size() > nearest->item.path.size())) {
                nearest = kept;
            }
        }
        if (nearest == result.end()) {
            result.push_back(c);
        } else if (risk(c) < risk(*nearest) && isSpecific(c)) {
            result.erase(nearest);
            result.push_back(c);
        }
    }
    return result;
}

TEST(OverlapResolverTest, AgreesWithASlowerWayOnGeneratedPaths) {
    constexpr int kRounds = 2'000;
    const Texts names{"a", "bb", "a b", "\u00e9", "e\u0301", "\u65e5"};
    std::mt19937 random{20'240};
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        std::vector<PendingSuggestion> pending(1 + below(kNames.size()));
        for (PendingSuggestion& each : pending) {
            each.suggestion.risk = kAllRisks[below(3)];
            each.isCatchAll = below(4) == 0;
        }
        std::vector<Candidate> candidates;
        const std::size_t count = below(30);
        while (candidates.size() < count) {
            std::string path;
            for (std::size_t depth = 1 + below(5); depth > 0; --depth) {
                path += "/" + names[below(1 + below(names.size()))];
            }
            candidates.push_back(candidate(below(pending.size()), path, candidates.size()));
        }
        ASSERT_EQ(
            described(resolveOverlaps(candidates, pending)),
            described(slowlyResolved(candidates, pending)));
    }
}

}  // namespace
}  // namespace Brimlo
