#include "BrimloApp/Shell/RowSteps.h"

#include <algorithm>
#include <ranges>

namespace Brimlo {
namespace {

constexpr std::size_t kMostSteps = 200;

/// The longest rising subsequence of the places, as the positions of its members (patience
/// sorting: C. Schensted, 1961). Rows in it keep their order, all others have to move.
std::vector<std::size_t> longestRising(const std::vector<std::optional<std::size_t>>& places) {
    std::vector<std::size_t> tails;  // For each length, the position that ends lowest.
    std::vector<std::optional<std::size_t>> before(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i]) {
            continue;
        }
        const auto tail = std::ranges::lower_bound(
            tails, *places[i], {}, [&](const std::size_t position) { return *places[position]; });
        if (tail != tails.begin()) {
            before[i] = *std::prev(tail);
        }
        if (tail == tails.end()) {
            tails.push_back(i);
        } else {
            *tail = i;
        }
    }
    std::vector<std::size_t> members;
    for (auto next = tails.empty() ? std::nullopt : std::optional{tails.back()}; next;
         next = before[*next]) {
        members.push_back(*next);
    }
    std::ranges::reverse(members);
    return members;
}

}  // namespace

std::optional<RowSteps> RowSteps::between(
    const std::vector<std::optional<std::size_t>>& places, const std::size_t newCount) {
    const std::vector<std::size_t> stay = longestRising(places);
    RowSteps steps;
    std::size_t oldFrom = 0;
    std::size_t newFrom = 0;
    // The gaps before each row that stays, and the one at the end.
    for (std::size_t i = 0; i <= stay.size(); ++i) {
        const std::size_t oldTo = i < stay.size() ? stay[i] : places.size();
        const std::size_t newTo = i < stay.size() ? *places[stay[i]] : newCount;
        if (oldFrom < oldTo) {
            steps.removals.push_back(
                {.first = static_cast<int>(oldFrom), .last = static_cast<int>(oldTo) - 1});
        }
        if (newFrom < newTo) {
            steps.insertions.push_back(
                {.first = static_cast<int>(newFrom), .last = static_cast<int>(newTo) - 1});
        }
        oldFrom = oldTo + 1;
        newFrom = newTo + 1;
    }
    if (steps.removals.size() + steps.insertions.size() > kMostSteps) {
        return std::nullopt;
    }
    std::ranges::reverse(steps.removals);
    return steps;
}

}  // namespace Brimlo
