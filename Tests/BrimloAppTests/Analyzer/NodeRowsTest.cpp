#include "BrimloApp/Analyzer/NodeRows.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloAppTests/Support/RowLines.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

namespace Brimlo {
namespace {

using Testing::lines;

/// A scanned folder of a film, an archive, a folder and many small files that are merged into one.
class NodeRowsTest : public Testing::ModelTest {
protected:
    NodeRowsTest() {
        write("tree/film\x1B.mp4", std::string(5 << 20, 'a'));
        write("tree/old.TAR", std::string(4 << 20, 'b'));
        write("tree/dir/inside", std::string(3 << 20, 'c'));
        makeFolder("tree/dir/void");
        for (int i = 0; i < 45; ++i) {
            write("tree/small" + std::to_string(i));
        }
        model().analyzer()->startScan(at("tree"));
        finish();
    }

    [[nodiscard]] QStringList selected() const { return lines(rows, {"selected"}); }

    NodeRows& rows = *model().analyzer()->rows();
    PlanReview& review = *model().analyzer()->review();
    const QAbstractItemModelTester tester{
        &rows, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(NodeRowsTest, FollowsTheFolderAndItsOrder) {
    const QList<QByteArray> roles{"name", "kind", "isDirectory", "isAggregate", "canOpen"};
    QSignalSpy changes{&rows, &NodeRows::nodesChanged};
    const QStringList bySize = lines(rows, roles);
    ASSERT_EQ(bySize.size(), 4);
    EXPECT_EQ(
        bySize.first(3),
        (QStringList{
            "film\uFFFD.mp4|video|false|false|false",
            "old.TAR|archive|false|false|false",
            "dir|folder|true|false|true"}));
    EXPECT_TRUE(bySize[3].endsWith("|other|false|true|false")) << bySize[3].toStdString();
    const auto dates = lines(rows, {"modified"});
    EXPECT_EQ(dates.count(""), 1) << "of the aggregate alone";
    model().analyzer()->setAscending(true);
    EXPECT_EQ(lines(rows, roles), QStringList(bySize.rbegin(), bySize.rend()));
    model().analyzer()->setSortKey("Name");
    EXPECT_EQ(lines(rows, {"name"}).indexOf("dir"), 1);
    rows.drill(static_cast<int>(lines(rows, {"name"}).indexOf("old.TAR")));
    rows.drill(1);
    EXPECT_EQ(lines(rows, {"name", "canOpen"}), (QStringList{"inside|false", "void|false"}));
    EXPECT_EQ(changes.size(), 3) << "one for each change";
}

TEST_F(NodeRowsTest, KeepsTheSelectionWithTheNodes) {
    rows.select(0);
    rows.select(1);
    EXPECT_EQ(selected(), (QStringList{"false", "true", "false", "false"}));
    rows.toggleSelected(2);
    rows.toggleSelected(1);
    rows.toggleSelected(4);
    rows.selectRange(0, 4);
    EXPECT_EQ(selected(), (QStringList{"false", "false", "true", "false"}));
    rows.selectRange(3, 1);
    EXPECT_EQ(selected(), (QStringList{"false", "true", "true", "true"}));
    model().analyzer()->setAscending(true);
    EXPECT_EQ(selected(), (QStringList{"true", "true", "true", "false"}));
    QSignalSpy told{&rows, &NodeRows::selectionChanged};
    rows.drill(1);
    EXPECT_EQ(rows.selectedCount(), 0);
    rows.selectAll();
    EXPECT_EQ(rows.selectedCount(), 2);
    const auto sizes = lines(rows, {"size"});
    EXPECT_EQ(rows.selectedSize(), sizes[0].toDouble() + sizes[1].toDouble());
    model().analyzer()->setCurrent(model().analyzer()->root());
    EXPECT_EQ(rows.selectedCount(), 0) << "all of another folder was selected, and nothing else";
    EXPECT_EQ(told.size(), 3);
}

TEST_F(NodeRowsTest, ReviewsWhatIsMeant) {
    struct Case {
        const char* name;
        std::vector<int> selection;
        int row;
        QStringList titles;  ///< Empty when no review is opened.
    };
    const QString film = QString::fromStdString(at("tree/film\uFFFD.mp4"));
    const QString old = QString::fromStdString(at("tree/old.TAR"));
    const Case cases[] = {
        {"beside the selection",       {0, 3}, 1,  {old}      },
        {"in the selection",           {0, 1}, 1,  {old, film}},
        {"an aggregate with others",   {0, 3}, 0,  {film}     },
        {"on an aggregate",            {0, 3}, 3,  {}         },
        {"on nothing",                 {0},    4,  {}         },
        {"selected, without the rest", {1, 3}, -1, {old}      },
        {"selected, the rest alone",   {3},    -1, {}         },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        rows.clearSelection();
        for (const int row : c.selection) {
            rows.toggleSelected(row);
        }
        if (c.row >= 0) {
            rows.review(c.row);
        } else {
            EXPECT_EQ(rows.reviewSelected(), !c.titles.empty());
        }
        QStringList titles = lines(review, {"title"});
        titles.sort();
        QStringList expected = c.titles;
        expected.sort();
        EXPECT_EQ(titles, expected);
        EXPECT_EQ(review.isOpen(), !expected.empty());
        review.close();
    }
    rows.selectRange(0, 1);
    rows.reviewSelected();
    review.confirm();
    EXPECT_EQ(rows.selectedCount(), 0);
    finish();
    EXPECT_EQ(rows.count(), 2);
    EXPECT_FALSE(Testing::exists(at("tree/old.TAR")));
}

TEST_F(NodeRowsTest, HandsARowsTruePathOn) {
    rows.copyPath(0);
    rows.copyPath(-1);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), at("tree/film\x1B.mp4"));
    rows.newRule(2);
    ASSERT_NE(model().rules()->ruleDraft(), nullptr);
    EXPECT_EQ(model().rules()->ruleDraft()->property("name").toString(), "dir");
    EXPECT_EQ(
        model().rules()->ruleDraft()->property("paths").toStringList(), QStringList{"~/tree/dir"});
}

}  // namespace
}  // namespace Brimlo
