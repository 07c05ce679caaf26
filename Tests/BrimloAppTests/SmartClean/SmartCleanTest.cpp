#include "BrimloApp/SmartClean/SmartClean.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::describeTree;
using testing::ElementsAre;
using Testing::exists;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SmartCleanTest : public Testing::ModelTest {
protected:
    SmartCleanTest() { addSampleRules(); }

    [[nodiscard]] std::vector<std::string> ids() {
        std::vector<std::string> ids;
        for (const Suggestion& each : model().smartClean()->suggestions()) {
            ids.push_back(each.id);
        }
        return ids;
    }

    [[nodiscard]] std::vector<std::string> planned() {
        std::vector<std::string> paths;
        const CleanPlan plan = model().smartClean()->currentPlan();
        for (const CleanItem& item : plan.items()) {
            paths.push_back(item.path.substr(home().size()));
        }
        return paths;
    }
};

TEST_F(SmartCleanTest, GoesFromRescanToACleanedDiskAndBack) {
    model();
    finish();
    const auto before = describeTree(at("caches/large"));

    model().smartClean()->loadSuggestions();
    EXPECT_EQ(model().smartClean()->suggestPhase(), "Starting…");
    const QDateTime started = model().smartClean()->suggestStarted();
    model().smartClean()->loadSuggestions();
    EXPECT_EQ(model().smartClean()->suggestStarted(), started);
    finish();
    EXPECT_THAT(ids(), ElementsAre("custom.caches", "custom.running", "custom.mine"));
    EXPECT_THAT(planned(), ElementsAre("/caches/large", "/caches/small"));

    model().cleanup()->run(model().smartClean()->currentPlan());
    EXPECT_TRUE(model().cleanup()->isCleaning());
    EXPECT_EQ(model().cleanup()->cleaningTotal(), 2);
    model().cleanup()->run(model().smartClean()->currentPlan(), [] { FAIL() << "ran twice"; });
    EXPECT_EQ(model().banner()->text(), "Could not start: another cleanup is still running.");

    finish();
    ASSERT_TRUE(model().cleanup()->lastReport());
    EXPECT_EQ(model().cleanup()->lastReport()->processed, 2);
    EXPECT_FALSE(exists(at("caches/large")));
    EXPECT_THAT(ids(), ElementsAre("custom.running", "custom.mine"));
    EXPECT_THAT(model().smartClean()->selected(), IsEmpty());
    EXPECT_GT(model().machine()->trashBytes(), 290'000);
    ASSERT_EQ(model().history()->batches().size(), 1U);

    model().history()->undoLastClean();
    EXPECT_EQ(model().busy(), "Restoring…");
    finish();
    EXPECT_EQ(model().banner()->text(), "Restored 2 item(s).");
    EXPECT_THAT(ids(), ElementsAre("custom.caches", "custom.running", "custom.mine"));
    EXPECT_TRUE(describeTree(at("caches/large")) == before);
    EXPECT_TRUE(exists(at("caches/small/data")));
    EXPECT_EQ(model().history()->batches().front().restorableCount(), 0U);
}

TEST_F(SmartCleanTest, KeepsThePlanInStepWithTheTicks) {
    write("project/package.json");
    write("project/node_modules/data", std::string(9'000, 'a'));
    model().settings()->setStaleDays(77);
    suggest();
    EXPECT_THAT(suggestion("artifact.node_modules").regenerates, testing::HasSubstr(" 77+ days"));
    const Suggestion& caches = suggestion("custom.caches");
    const auto whole = testing::ElementsAre("/caches/large", "/caches/small");

    model().smartClean()->toggle(caches);
    EXPECT_THAT(planned(), IsEmpty());

    // A safe rule with a running app is unticked even where it was ticked, and so is all else.
    model().smartClean()->toggle(suggestion("custom.running"));
    model().smartClean()->toggle(suggestion("custom.mine"));
    EXPECT_THAT(planned(), UnorderedElementsAre("/running/data", "/mine/data"));
    EXPECT_EQ(model().smartClean()->currentPlan().items().front().ruleID, "custom.mine");
    EXPECT_EQ(model().smartClean()->currentPlan().items().front().risk, Risk::review);
    model().smartClean()->selectAllSafe();
    EXPECT_THAT(planned(), whole);

    // What the audience filter hides stays in the plan.
    model().smartClean()->toggle(suggestion("custom.running"));
    model().smartClean()->rows()->setAudience("video");
    EXPECT_EQ(model().smartClean()->rows()->visibleCount(), 1);
    EXPECT_EQ(planned().size(), 3U);
    model().smartClean()->toggle(suggestion("custom.running"));
    EXPECT_THAT(planned(), whole) << "whatever is ticked meanwhile";
    model().smartClean()->rows()->setAudience("nobody");
    EXPECT_EQ(model().smartClean()->rows()->visibleCount(), 4);
    model().smartClean()->clearSelection();
    EXPECT_THAT(planned(), IsEmpty());
}

TEST_F(SmartCleanTest, KeepsAFailedItemOnTheListAndUnticksIt) {
    suggest();
    // Gone before the clean: the cleaner can only say that it is not there.
    std::filesystem::remove_all(at("caches/small"));
    model().cleanup()->run(model().smartClean()->currentPlan());
    finish();
    ASSERT_EQ(model().cleanup()->lastReport()->failures.size(), 1U);
    const Suggestion& caches = suggestion("custom.caches");
    ASSERT_EQ(caches.items.size(), 1U);
    EXPECT_EQ(caches.items.front().path, at("caches/small"));
    EXPECT_THAT(model().smartClean()->selected(), IsEmpty());
    EXPECT_THAT(planned(), IsEmpty());
}

TEST_F(SmartCleanTest, CarriesOutWhatTheReviewShowsOnce) {
    suggest();
    PlanReview& review = *model().smartClean()->review();
    const QAbstractItemModelTester tester{
        &review, QAbstractItemModelTester::FailureReportingMode::Fatal};
    const QSignalSpy confirmed{&review, &PlanReview::confirmed};
    model().smartClean()->clearSelection();
    model().smartClean()->toggle(suggestion("custom.caches"), {at("caches/large")});
    review.openSelection();
    EXPECT_FALSE(review.isOpen()) << "the gate has not spoken";
    model().smartClean()->selectAllSafe();
    finish();
    EXPECT_TRUE(review.isOpen());
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
    EXPECT_FALSE(exists(at("caches/large")));
    EXPECT_TRUE(exists(at("caches/small")));
    review.openSelection();
}

}  // namespace
}  // namespace Brimlo
