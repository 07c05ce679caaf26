#include "BrimloApp/AppModel/SuggestionFigures.h"

#include "BrimloCore/Models/Suggestion.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

Suggestion found(const Risk risk, const std::int64_t size) {
    Suggestion suggestion;
    suggestion.risk = risk;
    suggestion.items.resize(1);
    suggestion.items[0].size = size;
    return suggestion;
}

TEST(SuggestionFiguresTest, SumsByRisk) {
    EXPECT_EQ(SuggestionFigures::of({}), SuggestionFigures{});
    const SuggestionFigures figures = SuggestionFigures::of(
        {found(Risk::safe, 1),
         found(Risk::review, 10),
         found(Risk::rebuild, 100),
         found(Risk::safe, 1000),
         found(Risk::rebuild, 10000)});
    EXPECT_EQ(figures.count, 5);
    EXPECT_EQ(figures.safeBytes, 1001);
    EXPECT_EQ(figures.rebuildBytes, 10100);
}

}  // namespace
}  // namespace Brimlo
