#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Rectangles with areas in proportion to weights and side ratios near 1: the squarified treemap
/// (M. Bruls, K. Huizing, J. van Wijk: Squarified Treemaps, 2000).
namespace Brimlo::Squarify {

/// A rectangle in the caller's units, growing to the right and downwards from its origin.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Rect&) const = default;
};

/// The rectangle of one weight.
struct Cell {
    std::size_t index = 0;  ///< Index of the weight.
    Rect rect;              ///< Not rounded.

    bool operator==(const Cell&) const = default;
};

/// A cell for each weight above 0, heaviest first, equal ones in the order given. Together they
/// fill `rect`; none when it has no area. NaN weights have no cell.
[[nodiscard]] std::vector<Cell> layout(std::span<const double> weights, const Rect& rect);

}  // namespace Brimlo::Squarify
