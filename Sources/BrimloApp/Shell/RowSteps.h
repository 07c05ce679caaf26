#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace Brimlo {

/// How a list becomes another one of which some rows are the same.
struct RowSteps {
    /// Rows that follow one another.
    struct Run {
        int first = 0;
        int last = 0;
    };

    std::vector<Run> removals;    ///< The last ones first, in the places of the old list.
    std::vector<Run> insertions;  ///< In the order to be made, in the places of the new list.

    /// For each old row its place in the new list, or nullopt: the steps that leave as many rows as
    /// possible untouched. Nullopt when there would be so many that a reset is cheaper.
    [[nodiscard]] static std::optional<RowSteps> between(
        const std::vector<std::optional<std::size_t>>& places, std::size_t newCount);
};

}  // namespace Brimlo
