#include "BrimloApp/Lists/AreaRows.h"
#include "BrimloApp/Lists/CrumbRows.h"
#include "BrimloApp/Lists/DuplicateRows.h"
#include "BrimloApp/Lists/LargeFileRows.h"
#include "BrimloAppTests/Lists/RowLines.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtTest/QAbstractItemModelTester>

#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Testing::exists;
using Testing::lines;

class AnalysisRowsTest : public Testing::ModelTest {
protected:
    template <typename List>
    struct Tested : List {
        QAbstractItemModelTester tester{
            this, QAbstractItemModelTester::FailureReportingMode::Fatal};
    };

    Tested<AreaRows> areas;
    Tested<CrumbRows> crumbs;
    Tested<DuplicateRows> copies;
    Tested<LargeFileRows> files;
};

TEST_F(AnalysisRowsTest, LeadsFromTheRootToTheFolderAndBack) {
    write("tree/a\nb/inner/file");
    write("tree/a\nb/inner/other");
    crumbs.setSource(&model());
    crumbs.show(0);
    EXPECT_EQ(crumbs.folderName(), "");
    model().startScan(at("tree"));
    finish();
    model().drill(model().current()->children->front());
    model().drill(model().current()->children->front());
    EXPECT_EQ(lines(crumbs, {"name"}), (QStringList{"tree", "a\uFFFDb", "inner"}));
    EXPECT_EQ(crumbs.size(), static_cast<double>(model().current()->size));
    EXPECT_EQ(crumbs.fileCount(), 2);
    model().dispose({model().currentChildren().front()}, DisposalMode::trash);
    finish();
    EXPECT_EQ(crumbs.fileCount(), 1);
    crumbs.show(3);
    crumbs.show(1);
    EXPECT_EQ(crumbs.folderName(), "a\uFFFDb");
    restart();
    EXPECT_EQ(crumbs.count() + crumbs.size(), 0);
}

TEST_F(AnalysisRowsTest, ListsTheFirstEightAreasAndCountsTheRest) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "the administrator can read everything";
    }
    for (char letter = 'a'; letter <= 'k'; ++letter) {
        std::filesystem::permissions(makeFolder(letter + std::string{"\x1B/in"}), {});
    }
    std::filesystem::permissions(makeFolder("k\x1B/too"), {});
    areas.setSource(&model());
    model().startScan(home());
    finish();
    EXPECT_EQ(areas.count(), 8);
    EXPECT_EQ(areas.moreCount(), 3) << "areas, not folders";
    const QString reason = QString::fromStdString(model().unreadableAreas().front().reason);
    EXPECT_EQ(lines(areas, {"area", "areaCount", "reason"}).front(), "~/k\uFFFD|2|" + reason);
    restart();
    EXPECT_EQ(areas.count() + areas.moreCount(), 0);
}

TEST_F(AnalysisRowsTest, TrashesTheLargeFileThatIsMeant) {
    for (const auto& [name, megabytes] : std::vector<std::pair<const char*, int>>{
             {"b\x1B", 55},
             {"a",     60},
             {"c",     51}
    }) {
        const int file = open(write(name).c_str(), O_WRONLY | O_CLOEXEC);
        EXPECT_EQ(posix_fallocate(file, 0, off_t{megabytes} << 20), 0);
        close(file);
    }
    files.setSource(&model());
    model().findLargeFilesInHome();
    finish();
    EXPECT_EQ(lines(files, {"name"}), (QStringList{"a", "b\uFFFD", "c"}));
    EXPECT_EQ(lines(files, {"path"})[2].toStdString(), at("c"));
    const double left = files.totalBytes() - lines(files, {"size"})[1].toDouble();
    files.trash(3);
    files.trash(1);
    finish();
    EXPECT_EQ(lines(files, {"name"}), (QStringList{"a", "c"}));
    EXPECT_EQ(files.totalBytes(), left);
    EXPECT_FALSE(exists(at("b\x1B")));
    EXPECT_TRUE(exists(at("a")) && exists(at("c")));
}

TEST_F(AnalysisRowsTest, ResolvesTheGroupOfEqualFilesThatIsMeant) {
    for (const auto& [name, letter] : std::vector<std::pair<const char*, char>>{
             {"a",   'x'},
             {"b\n", 'x'},
             {"c",   'x'},
             {"d",   'y'},
             {"e",   'y'}
    }) {
        write(name, std::string(letter == 'x' ? 2 << 20 : 3 << 20, letter));
    }
    copies.setSource(&model());
    model().findDuplicatesInHome();
    finish();
    const QString place = QString::fromStdString(at("")) + "%1";
    EXPECT_EQ(
        lines(copies, {"kind", "path", "copies", "size", "wasted", "isKept", "isLast"}),
        (QStringList{
            "group||3|2097152|4194304|false|false",
            "path|" + place.arg("a") + "|0|0|0|true|false",
            "path|" + place.arg("b\uFFFD") + "|0|0|0|false|false",
            "path|" + place.arg("c") + "|0|0|0|false|true",
            "group||2|3145728|3145728|false|false",
            "path|" + place.arg("d") + "|0|0|0|true|false",
            "path|" + place.arg("e") + "|0|0|0|false|true"}));
    EXPECT_EQ(copies.reclaimable(), 7'340'032);
    for (const int none : {-1, 1, 3, 7}) {
        copies.trash(none);
        copies.clone(none);
    }
    finish();
    ASSERT_EQ(copies.groupCount(), 2);
    copies.trash(0);
    finish();
    EXPECT_TRUE(exists(at("a")));
    EXPECT_FALSE(exists(at("b\n")) || exists(at("c")));
    copies.clone(0);
    finish();
    EXPECT_EQ(copies.count(), 0);
    EXPECT_TRUE(model().banner().contains("lone")) << "done, or told why not";
}

}  // namespace
}  // namespace Brimlo
