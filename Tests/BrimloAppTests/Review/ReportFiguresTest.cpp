#include "BrimloApp/Review/ReportFigures.h"

#include "BrimloCore/Cleaner/CleanReport.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

TEST(ReportFiguresTest, TellsOfTheReportAndItsProblems) {
    const ReportFigures none = ReportFigures::of({});
    EXPECT_FALSE(none.hasProblems() || none.canUndo);
    const ReportFigures figures = ReportFigures::of(CleanReport{
        5,
        7,
        {{"/b\n", "no"}, {"docker:volume:v", "in use"}},
        {{"/a", "refused"}             },
        {{"/c", "lost"}},
        {"a note"             },
        {Uuid::random()},
        3
    });
    EXPECT_EQ(figures.movedToTrash, 5);
    EXPECT_EQ(figures.freedNow, 7);
    EXPECT_EQ(
        figures.problems,
        (QStringList{"/a: refused", "/b\uFFFD: no", "Docker volume v: in use", "/c: lost"}));
    EXPECT_TRUE(figures.hasProblems() && figures.canUndo);
    EXPECT_EQ(figures.processed, 3);
}

}  // namespace
}  // namespace Brimlo
