#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileRows.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/Cleaner/DuplicateExtras.h"

#include <QtGui/QImage>
#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using testing::ElementsAre;
using Testing::exists;
using Testing::HeldWork;

constexpr auto kRow = QAccessible::ListItem;

/// Large Files and Duplicates, which are much alike.
class SearchScreensTest : public Testing::WindowTest {
protected:
    [[nodiscard]] QPointF trashButton(const char* row) const {
        const QQuickItem& item = get(kRow, row);
        return item.mapToScene({item.width() - 50, item.height() / 2});
    }
    void closeReport() {
        waitToSee("Cleanup complete");
        key(Qt::Key_Return);
        await([&] { return !sees("Cleanup complete"); }, "its end");
    }
    void makeCopies() const {
        for (const char* const path : {"tree/a", "tree/b", "tree/c"}) {
            fill(path, 2'000'000);
        }
    }
};

TEST_F(SearchScreensTest, LargeFilesShowsTheFirstStateThatHolds) {
    const std::vector<const char*> states{
        "Cancel",
        "1 large file",
        "2 large files",
        "Find your biggest files.",
        "No large files found.",
        "Find large files",
        "Search again"};
    model().largeFiles()->setRoot(makeFolder("tree"));
    open(Section::LargeFiles);
    EXPECT_THAT(seen(states), ElementsAre("Find your biggest files.", "Find large files"));
    press("Change…");
    answerPanel(makeFolder("other"));
    EXPECT_EQ(model().largeFiles()->root(), at("other"));
    EXPECT_FALSE(model().largeFiles()->isSearching());
    press("Find large files");
    finish();
    EXPECT_THAT(seen(states), ElementsAre("No large files found.", "Search again"));
    expectLaidOut();

    fill("tree/one", 55'000'000);
    fill("tree/two", 60'000'000);
    {
        const HeldWork held;
        press("Search my home folder");
        EXPECT_THAT(seen(states), ElementsAre("Cancel"));
        press("Cancel");
    }
    finish();
    EXPECT_THAT(seen(states), ElementsAre("Find your biggest files.", "Find large files"));
    press("Find large files");
    finish();
    EXPECT_THAT(seen(states), ElementsAre("2 large files", "Search again"));
    EXPECT_LT(middle(get(kRow, "two, *")).y(), middle(get(kRow, "one, *")).y());
    expectLaidOut();
    expectReadable();

    click(kRow, "two, *");
    clickAt(trashButton("two, *"));
    finish();
    closeReport();
    EXPECT_THAT(seen(states), ElementsAre("1 large file", "Search again"));
    EXPECT_FALSE(exists(at("tree/two")));
    EXPECT_TRUE(get(QAccessible::List, "Large Files").hasActiveFocus()) << "it has the keys back";
    key(Qt::Key_Delete);
    finish();
    closeReport();
    EXPECT_FALSE(exists(at("tree/one")));
    EXPECT_THAT(seen(states), ElementsAre("No large files found.", "Search again"));
}

TEST_F(SearchScreensTest, ChipsFilterLargeFilesAndKeepTheFocus) {
    fill("tree/film.mkv", 60'000'000);
    fill("tree/song.wav", 55'000'000);
    fill("tree/disk.iso", 58'000'000);
    age(at("tree/disk.iso"), 40);
    model().largeFiles()->setRoot(at("tree"));
    open(Section::LargeFiles);
    press("Find large files");
    finish();
    const auto shows = [&](const std::vector<const char*>& rows) {
        finish();
        return seen({"disk.iso, *", "film.mkv, *", "song.wav, *", "No large files found."}) ==
               std::vector<std::string>(rows.begin(), rows.end());
    };
    press("Video");
    EXPECT_TRUE(shows({"film.mkv, *"}));
    EXPECT_TRUE(get(QAccessible::Button, "Video").hasActiveFocus());
    press("Audio");
    EXPECT_TRUE(shows({"film.mkv, *", "song.wav, *"}));
    expectLaidOut();
    press("Video");
    model().largeFiles()->choice()->setMinSize(57e6);
    EXPECT_TRUE(shows({"No large files found."}));
    press("Audio");
    EXPECT_TRUE(shows({"disk.iso, *", "film.mkv, *"}));
    model().largeFiles()->choice()->setOlderThan(30);
    EXPECT_TRUE(shows({"disk.iso, *"}));
    model().largeFiles()->choice()->setOlderThan(0);
    finish();
    const auto first = [&](const char* name) {
        return get(QAccessible::ListItem, name).property("index").toInt() == 0;
    };
    for (const auto& [order, name] : {
             std::pair{"Name",     "disk.iso, *"},
             std::pair{"Modified", "film.mkv, *"},
    }) {
        press("Sort by");
        choose(order);
        await([&] { return model().largeFiles()->rows()->order()->key() == order; }, order);
        EXPECT_EQ(first(name), order == QString{"Modified"});
        press("Reverse order");
        EXPECT_EQ(first(name), order == QString{"Name"});
        press("Reverse order");
    }
}

TEST_F(SearchScreensTest, DuplicatesShowsTheFirstStateThatHolds) {
    const std::vector<const char*> states{
        "Comparing files…",
        "1 group of identical files",
        "2 groups of identical files",
        "Find identical files.",
        "No duplicates found.",
        "Find duplicates",
        "Search again"};
    model().duplicates()->setRoot(makeFolder("tree"));
    open(Section::Duplicates);
    EXPECT_THAT(seen(states), ElementsAre("Find identical files.", "Find duplicates"));
    {
        const HeldWork held;
        press("Find duplicates");
        EXPECT_THAT(seen(states), ElementsAre("Comparing files…"));
        EXPECT_NE(find(QAccessible::Button, "Cancel"), nullptr);
    }
    finish();
    EXPECT_THAT(seen(states), ElementsAre("No duplicates found.", "Search again"));

    makeCopies();
    fill("tree/d", 3'000'000);
    fill("tree/e", 3'000'000);
    press("Search my home folder");
    EXPECT_EQ(model().duplicates()->root(), home());
    finish();
    EXPECT_THAT(seen(states), ElementsAre("2 groups of identical files", "Search again"));
    EXPECT_TRUE(sees("3 copies 2 MB each, wastes 4 MB"));
    EXPECT_TRUE(sees("7 MB reclaimable"));
    EXPECT_TRUE(sees(QString::fromStdString("Kept, " + at("tree/a"))));
    EXPECT_TRUE(sees(QString::fromStdString("Extra copy, " + at("tree/c"))));
    for (const double scale : {1.5, 1.0}) {
        setTheme("fontScale", scale);
        expectLaidOut();
    }
    expectReadable();

    press("Trash extras");
    finish();
    EXPECT_TRUE(exists(at("tree/a")));
    EXPECT_FALSE(exists(at("tree/b")));
    closeReport();
    EXPECT_THAT(seen(states), ElementsAre("1 group of identical files", "Search again"));
    auto groups = model().duplicates()->groups();
    EXPECT_EQ(isEnabled("Replace with clones"), !DuplicateExtras::cloneRefusal(groups.at(0)));
    model().duplicates()->show({});
    EXPECT_TRUE(sees("3 MB reclaimable so far; the search was cancelled"));
    // As if the volume had clones: what is refused is known by the group's id.
    groups.at(0).id = Uuid::random();
    model().duplicates()->setGroups(groups);
    press("Replace with clones");
    finish();
    EXPECT_FALSE(model().banner()->text().isEmpty());
    waitToSee(model().banner()->text());
}

TEST_F(SearchScreensTest, FilesHaveAMenuAndSeveralGoAtOnce) {
    for (const char* const path : {"tree/one.iso", "tree/two", "tree/run.sh"}) {
        fill(path, 55'000'000);
    }
    std::filesystem::permissions(at("tree/run.sh"), std::filesystem::perms::owner_all);
    makeCopies();
    const auto reviewed = [&](const char* items) {
        choose("Review & Move to Trash…");
        waitToSee(items);
        press("Clean *");
        finish();
        closeReport();
    };
    model().largeFiles()->setRoot(at("tree"));
    open(Section::LargeFiles);
    press("Find large files");
    finish();
    click(kRow, "run.sh, *", Qt::RightButton);
    choose("Open");
    EXPECT_EQ(model().banner()->text(), "Could not open it: it may be a program.");
    EXPECT_TRUE(opened().empty());
    click(kRow, "one.iso, *");
    key(Qt::Key_F10, Qt::ShiftModifier);
    choose("Open");
    EXPECT_EQ(opened().size(), 1U);
    clickAt(middle(get(kRow, "two, *")), Qt::LeftButton, Qt::ControlModifier);
    key(Qt::Key_Home);
    key(Qt::Key_Space);
    waitToSee("2 selected");
    key(Qt::Key_Menu);
    reviewed("2 items · *");
    EXPECT_EQ(model().largeFiles()->files().size(), 1U);

    model().duplicates()->setRoot(at("tree"));
    model().setSection(Section::Duplicates);
    press("Find duplicates");
    finish();
    click(kRow, "Kept, *");
    key(Qt::Key_F10, Qt::ShiftModifier);
    reviewed("1 items · *");
    EXPECT_FALSE(exists(at("tree/a")));
    EXPECT_EQ(
        model().duplicates()->groups().at(0).paths(), (std::vector{at("tree/b"), at("tree/c")}));
}

TEST_F(SearchScreensTest, TheCopyThatStaysIsChosenByRuleFolderAndHand) {
    makeCopies();
    fill("tree/kept/d", 2'000'000);
    age(at("tree/b"), 3);
    const auto row = [&](const char* mark, const char* file) {
        return QString::fromStdString(mark + at(file));
    };
    model().duplicates()->setRoot(at("tree"));
    open(Section::Duplicates);
    press("Find duplicates");
    finish();
    tabTo(QAccessible::ComboBox, "Keep: first by name");
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    waitToSee(row("Kept, ", "tree/b"));
    EXPECT_TRUE(sees("Keep: oldest"));
    click(kRow, row("Extra copy, ", "tree/kept/d"), Qt::RightButton);
    choose("Keep Everything in This Folder");
    waitToSee(row("Kept, ", "tree/kept/d"));
    EXPECT_TRUE(sees(row("Extra copy, ", "tree/b")));
    EXPECT_TRUE(sees("6 MB reclaimable"));
    const QQuickItem& extra = get(kRow, row("Extra copy, ", "tree/a"));
    clickAt(extra.mapToScene({40, extra.height() / 2}));
    waitToSee(row("Kept, ", "tree/a"));
    click(kRow, row("Extra copy, ", "tree/c"));
    key(Qt::Key_Space);
    waitToSee(row("Kept, ", "tree/c"));
    EXPECT_TRUE(sees("4 MB reclaimable"));
    expectLaidOut();
    press("Review extras…");
    finish();
    waitToSee("2 items · *");
    EXPECT_TRUE(sees(row("", "tree/a") + row(", Copy of ", "tree/c") + ", which stays, *"));
    press("Clean *");
    finish();
    closeReport();
    EXPECT_FALSE(exists(at("tree/a")) || exists(at("tree/b")));
    EXPECT_TRUE(exists(at("tree/c")) && exists(at("tree/kept/d")));
    press("Keep all in kept");
    waitToSee(row("Extra copy, ", "tree/kept/d"));
    EXPECT_TRUE(get(QAccessible::List, "Duplicates").hasActiveFocus());
}

TEST_F(SearchScreensTest, DuplicatesAreFoundInSeveralFoldersFromALeastLength) {
    fill("one/a", 200'000);
    fill("two/b", 200'000);
    model().duplicates()->setRoot(at("one"));
    open(Section::Duplicates);
    press("Add folder…");
    answerPanel(at("two"));
    waitToSee("Also in two");
    press("Find duplicates");
    finish();
    EXPECT_TRUE(
        sees("Nothing in these folders is an exact copy of something else (files of 1 MB or *"));
    tabTo(QAccessible::ComboBox, "Compare: files of 1 MB or more");
    key(Qt::Key_Up);
    waitToSee("Compare: files of 64 KB or more");
    expectLaidOut();
    press("Search again");
    finish();
    waitToSee(QString::fromStdString("Extra copy, " + at("two/b")));
    expectLaidOut();
    press("Add folder…");
    answerPanel(at("two/../two"));
    waitToSee("This folder is searched already.");
    press("Also in two");
    await([&] { return model().duplicates()->otherFolders().isEmpty(); }, "its end");
    finish();
    EXPECT_TRUE(
        sees("Nothing in this folder is an exact copy of something else (files of 64 KB or *"));
}

TEST_F(SearchScreensTest, GroupsAreFilteredAndEqualFoldersKept) {
    for (const char* const folder : {"tree/new/rome", "tree/old/rome"}) {
        fill(std::string{folder} + "/film.mp4", 1'500'000);
        QImage picture{900, 900, QImage::Format_RGB32};
        picture.fill(Qt::darkGreen);
        // Uncompressed, so that it is long enough.
        ASSERT_TRUE(picture.save(QString::fromStdString(at(folder) + "/Forum.bmp")));
        write(std::string{folder} + "/note", "short");
    }
    makeFolder("tree/Library");
    model().duplicates()->setRoot(at("tree"));
    open(Section::Duplicates);
    press("Find duplicates");
    finish();
    EXPECT_TRUE(sees("2 groups of identical files"));
    EXPECT_TRUE(sees("Left out: 2 files shorter than 1 MB (10 bytes in all) and 1 folder of *"));
    expectLaidOut();

    key(Qt::Key_F, Qt::ControlModifier);
    type("*.BMP");
    waitToSee("1 of 2 groups of identical files");
    EXPECT_TRUE(sees("2.4 MB reclaimable"));
    click(kRow, "Extra copy, *");
    key(Qt::Key_Y, Qt::ControlModifier);
    waitToSee("Forum.bmp");
    await(
        [&] { return get(QAccessible::Graphic, "Forum.bmp").property("status").toInt() == 1; },
        "the picture");
    press("Done");
    press("Review extras shown…");
    finish();
    waitToSee("1 items · *");
    press("Cancel");
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    waitToSee("2 groups of identical files");

    press("1 set of equal folders…");
    waitToSee("2 equal folders, each 3 files and *");
    expectLaidOut();
    click(kRow, QString::fromStdString(at("tree/old")));
    key(Qt::Key_Space);
    press("Done");
    EXPECT_TRUE(sees(QString::fromStdString("Kept, " + at("tree/old/rome/film.mp4"))));
    EXPECT_TRUE(sees(QString::fromStdString("Extra copy, " + at("tree/new/rome/film.mp4"))));
    click(kRow, "2 copies *");
    press("Trash extras");
    finish();
    closeReport();
    EXPECT_TRUE(model().duplicates()->equalFolders().isEmpty()) << "one has less in it now";
}

TEST_F(SearchScreensTest, BothAreUsedByTheKeyboardAlone) {
    fill("tree/large", 55'000'000);
    makeCopies();
    model().largeFiles()->setRoot(at("tree"));
    model().duplicates()->setRoot(at("tree"));
    open();
    key(Qt::Key_4, Qt::ControlModifier);
    tabTo(QAccessible::Button, "Find large files");
    key(Qt::Key_Return);
    finish();
    await(
        [&] { return get(QAccessible::List, "Large Files").hasActiveFocus(); },
        "the keys of the files");
    key(Qt::Key_Return);
    await([&] { return opened().size() == 1; }, "the file manager");

    key(Qt::Key_6, Qt::ControlModifier);
    tabTo(QAccessible::Button, "Find duplicates");
    key(Qt::Key_Space);
    finish();
    await(
        [&] { return get(QAccessible::List, "Duplicates").hasActiveFocus(); },
        "the keys of the copies");
    tabTo(QAccessible::Button, "Trash extras");
    key(Qt::Key_Return);
    finish();
    EXPECT_FALSE(exists(at("tree/b")));
    closeReport();
}

}  // namespace
}  // namespace Brimlo
