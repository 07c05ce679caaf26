#include "BrimloCore/SuggestionEngine/OverlapResolver.h"

#include "BrimloCore/Support/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Brimlo {
namespace {

using SuggestionEngine::Candidate;
using SuggestionEngine::PendingSuggestion;
using SuggestionEngine::resolveOverlaps;
using Texts = std::vector<std::string>;

std::string described(const std::vector<Candidate>& candidates) {
    std::string text;
    for (const Candidate& c : candidates) {
        text += (text.empty() ? "" : ", ") + std::to_string(c.suggestion) + " " + c.item.path +
                " #" + std::to_string(c.item.idleDays.value_or(-1));
    }
    return text;
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
        std::vector<PendingSuggestion> pending(1 + below(6));
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
            // The idle days number the candidates, so that equal ones can be told apart.
            const auto number = static_cast<std::int64_t>(candidates.size());
            candidates.push_back({
                below(pending.size()), {.path = path, .idleDays = number}
            });
        }
        ASSERT_EQ(
            described(resolveOverlaps(candidates, pending)),
            described(slowlyResolved(candidates, pending)));
    }
}

}  // namespace
}  // namespace Brimlo
