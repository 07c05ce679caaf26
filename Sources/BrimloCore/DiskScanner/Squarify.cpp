#include "BrimloCore/DiskScanner/Squarify.h"

#include <algorithm>
#include <limits>

namespace Brimlo::Squarify {

namespace {

struct Area {
    std::size_t index = 0;
    double area = 0;
};

using Areas = std::vector<Area>;

/// The weights scaled to the area of `rect`, largest first; none when there is nothing to lay out.
Areas areasOf(std::span<const double> weights, const Rect& rect) {
    Areas areas;
    areas.reserve(weights.size());
    for (std::size_t i = 0; i < weights.size(); ++i) {
        if (weights[i] > 0) {
            areas.push_back({.index = i, .area = weights[i]});
        }
    }
    std::ranges::stable_sort(areas, std::ranges::greater{}, &Area::area);
    double sum = 0;
    for (const Area& area : areas) {
        sum += area.area;
    }
    // The negations reject NaN as well.
    if (!(sum > 0) || !(rect.width > 0) || !(rect.height > 0)) {
        return {};
    }
    const double scale = rect.width * rect.height / sum;
    for (Area& area : areas) {
        area.area *= scale;
    }
    return areas;
}

struct Row {
    std::span<const Area> areas;
    double sum = 0;
};

/// The side ratio of the worst cell of a row of areas from `largest` to `smallest`.
double worstRatio(double side, double sum, double largest, double smallest) {
    if (!(smallest > 0)) {
        return std::numeric_limits<double>::infinity();
    }
    const double squaredSide = side * side;
    const double squaredSum = sum * sum;
    return std::max(squaredSide * largest / squaredSum, squaredSum / (squaredSide * smallest));
}

/// The first areas, as many as fit in a row along `side` before its worst ratio gets worse. At
/// least one.
Row fillRow(std::span<const Area> areas, double side) {
    double best = std::numeric_limits<double>::infinity();
    double sum = 0;
    std::size_t count = 0;
    while (count < areas.size()) {
        // The areas are sorted, so the row's first is its largest and its last the smallest.
        const double smallest = areas[count].area;
        const double worst = worstRatio(side, sum + smallest, areas.front().area, smallest);
        if (best < worst && count > 0) {
            break;
        }
        best = worst;
        sum += smallest;
        ++count;
    }
    return {.areas = areas.first(count), .sum = sum};
}

/// Places a row along the shorter side of `remaining`, and cuts it off there.
void place(const Row& row, double side, Rect& remaining, std::vector<Cell>& cells) {
    const double thickness = row.sum / side;
    const bool isColumn = remaining.height <= remaining.width;
    double offset = 0;
    for (const Area& area : row.areas) {
        const double length = area.area / thickness;
        const Rect column{remaining.x, remaining.y + offset, thickness, length};
        const Rect band{remaining.x + offset, remaining.y, length, thickness};
        cells.push_back({.index = area.index, .rect = isColumn ? column : band});
        offset += length;
    }
    double& origin = isColumn ? remaining.x : remaining.y;
    double& extent = isColumn ? remaining.width : remaining.height;
    origin += thickness;
    extent = std::max(0.0, extent - thickness);
}

}  // namespace

std::vector<Cell> layout(std::span<const double> weights, const Rect& rect) {
    const Areas areas = areasOf(weights, rect);
    std::vector<Cell> cells;
    cells.reserve(areas.size());
    Rect remaining = rect;
    while (cells.size() < areas.size()) {
        const double side = std::min(remaining.width, remaining.height);
        place(fillRow(std::span{areas}.subspan(cells.size()), side), side, remaining, cells);
    }
    return cells;
}

}  // namespace Brimlo::Squarify
