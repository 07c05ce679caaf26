#include "BrimloCore/DiskScanner/Squarify.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace Brimlo::Squarify {
namespace {

using Weights = std::vector<double>;

// The example of Bruls, Huizing, van Wijk: Squarified Treemaps, figure 3.
TEST(SquarifyTest, LaysOutRowsAsThePaperDoes) {
    const Rect expected[] = {
        {0,            0,       3,        2      },
        {0,            2,       3,        2      },
        {3,            0,       12.0 / 7, 7.0 / 3},
        {3 + 12.0 / 7, 0,       9.0 / 7,  7.0 / 3},
        {3,            7.0 / 3, 1.2,      5.0 / 3},
        {4.2,          7.0 / 3, 1.2,      5.0 / 3},
        {5.4,          7.0 / 3, 0.6,      5.0 / 3},
    };
    const std::vector<Cell> cells = layout(Weights{6, 6, 4, 3, 2, 2, 1}, {0, 0, 6, 4});
    ASSERT_EQ(cells.size(), std::size(expected));
    for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_EQ(cells[i].index, i);
        EXPECT_NEAR(cells[i].rect.x, expected[i].x, 1e-9);
        EXPECT_NEAR(cells[i].rect.y, expected[i].y, 1e-9);
        EXPECT_NEAR(cells[i].rect.width, expected[i].width, 1e-9);
        EXPECT_NEAR(cells[i].rect.height, expected[i].height, 1e-9);
    }
}

TEST(SquarifyTest, FillsTheRectangleWithoutOverlap) {
    std::mt19937 random{7};
    std::lognormal_distribution<double> sizes{0, 4};
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        Weights weights(1 + random() % 60);
        for (double& weight : weights) {
            weight = random() % 5 == 0 ? 1 : sizes(random);
        }
        const Rect rect{-3, 8, 1.0 + static_cast<double>(random() % 900), 300};
        const std::vector<Cell> cells = layout(weights, rect);
        ASSERT_EQ(cells.size(), weights.size());
        const double whole = rect.width * rect.height;
        double sum = 0;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Rect& a = cells[i].rect;
            sum += a.width * a.height;
            EXPECT_GE(weights[cells[i == 0 ? 0 : i - 1].index], weights[cells[i].index]);
            for (std::size_t j = 0; j < i; ++j) {
                const Rect& b = cells[j].rect;
                const double shared =
                    std::max(0.0, std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x)) *
                    std::max(0.0, std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y));
                EXPECT_LT(shared, whole * 1e-9);
            }
        }
        EXPECT_NEAR(sum, whole, whole * 1e-9);
    }
}

TEST(SquarifyTest, EndsWhateverTheNumbers) {
    const double tiny = std::numeric_limits<double>::denorm_min();
    const double huge = std::numeric_limits<double>::max();
    const double infinity = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(layout(Weights{-1, 0, none}, {0, 0, 10, 10}).size(), 0U);
    EXPECT_EQ(layout(Weights{1}, {0, 0, none, 10}).size(), 0U);
    EXPECT_EQ(layout(Weights{1, tiny, tiny}, {0, 0, 10, 10}).size(), 3U);
    static_cast<void>(layout(Weights{huge, huge, 1}, {0, 0, 10, 10}));
    static_cast<void>(layout(Weights{infinity, 1, infinity}, {0, 0, 10, 10}));
    static_cast<void>(layout(Weights{1, 2}, {0, 0, infinity, 10}));
    EXPECT_EQ(layout(Weights(1'000, 0.1), {0, 0, 1e-300, 1e-300}).size(), 1'000U);
}

}  // namespace
}  // namespace Brimlo::Squarify
