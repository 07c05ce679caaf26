#include "BrimloApp/Review/PlanReview.h"

#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

namespace Brimlo {
namespace {

using Testing::exists;

struct PlanReviewTest : Testing::ModelTest {
    PlanReviewTest() {
        write(".cache/thumbnails/normal/data");
        write(".cache/thumbnails/large/data");
    }

    PlanReview& review = *model().smartClean()->review();
    const QAbstractItemModelTester tester{
        &review, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy confirmed{&review, &PlanReview::confirmed};
};

TEST_F(PlanReviewTest, CarriesOutWhatItShowsOnce) {
    suggest();
    const std::string path = at(".cache/thumbnails/normal");
    model().smartClean()->clearSelection();
    model().smartClean()->toggle(path);
    review.openSelection();
    model().smartClean()->selectAllSafe();
    EXPECT_EQ(review.count(), 1);
    model().cleanup()->run(CleanPlan{{}});
    review.confirm();
    EXPECT_TRUE(review.isOpen()) << "during another clean nothing would come of it";
    finish();
    review.confirm();
    review.confirm();
    finish();
    EXPECT_FALSE(review.isOpen());
    EXPECT_EQ(confirmed.size(), 1);
    EXPECT_FALSE(exists(path));
    EXPECT_TRUE(exists(at(".cache/thumbnails/large")));
    review.openSelection();
}

}  // namespace
}  // namespace Brimlo
