#include "BrimloApp/Review/PlanReview.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloAppTests/Support/RowLines.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::exists;
using Testing::lines;

struct PlanReviewTest : Testing::ModelTest {
    PlanReviewTest() {
        write(".cache/thumbnails/normal/data");
        write(".cache/thumbnails/large/data");
    }

    const QList<QByteArray> roles{"title", "subtitle", "isDocker"};
    PlanReview& review = *model().smartClean()->review();
    const QAbstractItemModelTester tester{
        &review, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy confirmed{&review, &PlanReview::confirmed};
};

TEST_F(PlanReviewTest, CarriesOutWhatItShowsOnce) {
    suggest();
    const std::string path = at(".cache/thumbnails/normal");
    const std::string title = suggestion("photos.thumbnails").name;
    model().smartClean()->clearSelection();
    model().smartClean()->toggle(path);
    review.openSelection();
    model().smartClean()->selectAllSafe();
    EXPECT_EQ(
        lines(review, roles), QStringList{QString::fromStdString(title + "|" + path + "|false")});
    EXPECT_FALSE(review.hasReviewItems());
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

TEST_F(PlanReviewTest, CallsDockersObjectsByTheirNames) {
    const std::string docker = write("docker", R"(#!/bin/sh
[ "$*" != 'system df -v --format json' ] || echo '{"Images":[{"ID":"sha256:ab","Repository":"shop",
    "Tag":"3","CreatedSince":"2 days ago","Containers":"0","Size":"5MB","UniqueSize":"5MB"}]}'
)");
    std::filesystem::permissions(docker, std::filesystem::perms::owner_all);
    suggest();
    model().smartClean()->clearSelection();
    model().smartClean()->toggle("docker:image:sha256:ab");
    review.openSelection();
    EXPECT_EQ(lines(review, roles), QStringList{"shop:3|Docker: Unused images · 2 days ago|true"});
}

TEST_F(PlanReviewTest, DisposesOfNodesAndTellsDockersObjectsFromThem) {
    write("odd\n", std::string(900'000, 'a'));
    model().analyzer()->startScan(home());
    finish();
    const auto other = std::make_shared<FileNode>();
    other->isAggregate = true;
    review.openNodes({other});
    EXPECT_FALSE(review.isOpen()) << "nothing is left of it";
    other->isAggregate = false;
    other->path = "docker:image:a";
    other->size = 7000;
    const auto odd = model().analyzer()->currentChildren().front();
    review.openNodes({other, odd});
    EXPECT_EQ(review.freedNow(), 7000);
    EXPECT_EQ(review.freedAfterEmptying(), static_cast<double>(odd->size));
    EXPECT_EQ(review.totalBytes(), review.freedNow() + review.freedAfterEmptying());
    EXPECT_TRUE(review.hasReviewItems());
    const QString path = QString::fromStdString(at("odd")) + "\uFFFD";
    EXPECT_EQ(lines(review, roles), (QStringList{"Docker image a||true", path + "||false"}));
    review.confirm();
    finish();
    EXPECT_FALSE(exists(at("odd\n")));
    EXPECT_NE(model().analyzer()->currentChildren().front(), odd) << "it is still in the tree";
}

}  // namespace
}  // namespace Brimlo
