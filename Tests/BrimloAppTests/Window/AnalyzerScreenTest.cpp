#include "BrimloApp/Screens/TreemapItem.h"
#include "BrimloAppTests/Window/WindowTest.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using testing::ElementsAre;
using Testing::exists;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kRow = QAccessible::ListItem;

class AnalyzerScreenTest : public Testing::WindowTest {
protected:
    AnalyzerScreenTest() {
        write("tree/large/inner/data", std::string(400'000, 'a'));
        write("tree/small", std::string(100'000, 'b'));
        write("tree/stays", std::string(50'000, 'c'));
        makeFolder("tree/empty");
    }

    void openScanned() {
        model().startScan(at("tree"));
        open(Section::analyzer);
        ASSERT_TRUE(model().hasTree());
    }

    [[nodiscard]] std::vector<std::string> rows() const {
        return seen({"large, *", "small, *", "stays, *", "empty, *", "inner, *"});
    }
    [[nodiscard]] QPointF row(const char* name) const { return middle(get(kRow, name)); }
    [[nodiscard]] std::string shownFolder() { return model().current()->name; }

    [[nodiscard]] TreemapItem& map() const {
        auto* const map = qobject_cast<TreemapItem*>(find(QAccessible::Graphic, "Treemap"));
        EXPECT_NE(map, nullptr);
        return *map;
    }
};

TEST_F(AnalyzerScreenTest, ShowsTheFirstStateThatHolds) {
    const std::vector<const char*> states{
        "Cancel", "tree", "Treemap", "See exactly what is using your disk."};
    model().setScanRoot("/usr");
    open(Section::analyzer);
    EXPECT_THAT(seen(states), ElementsAre("Treemap", "See exactly what is using your disk."))
        << "the treemap's button is always there";
    {
        const Testing::HeldWork held;
        model().startScan(at("tree"));
        EXPECT_THAT(seen(states), ElementsAre("Cancel", "tree", "Treemap")) << "of the toolbar";
        EXPECT_FALSE(isEnabled("Scan"));
    }
    finish();
    EXPECT_THAT(rows(), SizeIs(4));
    EXPECT_FALSE(sees("See exactly what is using your disk."));
    for (const int mode : {7, 1, 0}) {
        model().setAnalyzerMode(mode);
        EXPECT_EQ(find(QAccessible::Graphic, "Treemap") != nullptr, mode != 0);
        EXPECT_EQ(rows().empty(), mode != 0);
    }
    // A scan hides the tree, and one that is cancelled leaves nothing.
    {
        const Testing::HeldWork held;
        model().startScan("/usr");
        EXPECT_THAT(rows(), IsEmpty());
        press("Cancel");
    }
    finish();
    EXPECT_TRUE(sees("See exactly what is using your disk."));
    for (const char* const button : {"Scan home folder", "Scan System disk"}) {
        {
            const Testing::HeldWork held;
            press(button);
            EXPECT_TRUE(model().isScanning());
            EXPECT_EQ(
                model().scanRoot(), std::string_view{button} == "Scan home folder" ? home() : "/");
            key(Qt::Key_Escape);
        }
        finish();
        EXPECT_FALSE(model().hasTree());
    }
}

TEST_F(AnalyzerScreenTest, SetsTheFolderByItsMenuWithoutAScan) {
    model().setScanRoot(at("tree"));
    open(Section::analyzer);
    struct Case {
        const char* entry;
        std::string root;
    };
    const Case cases[] = {
        {"System disk",      "/"       },
        {"Home folder",      home()    },
        {"Choose folder…", at("tree")},
    };
    for (const Case& c : cases) {
        press(QString::fromStdString(
            std::filesystem::path{model().scanRoot()}.filename().string() == ""
                ? "/"
                : std::filesystem::path{model().scanRoot()}.filename()));
        choose(c.entry);
        if (c.root == at("tree")) {
            answerPanel(at("tree"));
        }
        await([&] { return model().scanRoot() == c.root; }, c.entry);
        await([&] { return !sees("Choose folder…"); }, "the end of the menu");
        EXPECT_FALSE(model().isScanning());
    }
    press("Scan");
    finish();
    EXPECT_TRUE(model().hasTree());
}

TEST_F(AnalyzerScreenTest, SortsByMenuColumnAndDirection) {
    openScanned();
    const std::pair<const char*, FileNode::SortKey> keys[] = {
        {"Name",     FileNode::SortKey::name    },
        {"Modified", FileNode::SortKey::modified},
        {"Items",    FileNode::SortKey::items   },
        {"Size",     FileNode::SortKey::size    },
    };
    for (const auto& [entry, wanted] : keys) {
        press("Sort by");
        choose(entry);
        await([&] { return model().sortKey() == wanted; }, entry);
        await([&] { return find(QAccessible::MenuItem, entry) == nullptr; }, "its end");
        press("Sort by");
        await([&] { return find(QAccessible::MenuItem, entry) != nullptr; }, "the menu");
        EXPECT_TRUE(find(QAccessible::MenuItem, entry)->property("checked").toBool());
        key(Qt::Key_Escape);
        await([&] { return find(QAccessible::MenuItem, entry) == nullptr; }, "its end");
    }
    press("Reverse order");
    EXPECT_TRUE(model().ascending());
    EXPECT_LT(row("empty, *").y(), row("large, *").y());
    press("Name");
    EXPECT_EQ(model().sortKey(), FileNode::SortKey::name);
    press("Name");
    EXPECT_FALSE(model().ascending());
}

TEST_F(AnalyzerScreenTest, DrillsByDoubleClickAndComesBackByCrumbs) {
    openScanned();
    doubleClickAt(row("small, *"));
    doubleClickAt(row("empty, *"));
    EXPECT_EQ(shownFolder(), "tree");
    doubleClickAt(row("large, *"));
    EXPECT_EQ(shownFolder(), "large");
    doubleClickAt(row("inner, *"));
    EXPECT_EQ(shownFolder(), "inner");
    press("large");
    EXPECT_EQ(shownFolder(), "large");
    key(Qt::Key_Backspace);
    EXPECT_EQ(shownFolder(), "tree");
}

TEST_F(AnalyzerScreenTest, ActsOnTheRowOrOnTheSelectionThatItIsIn) {
    openScanned();
    struct Case {
        std::vector<const char*> selected;
        const char* clicked;
        const char* items;
    };
    const Case cases[] = {
        {{"small, *"},             "stays, *", "1 items · *"},
        {{"small, *", "stays, *"}, "stays, *", "2 items · *"},
        {{"small, *", "stays, *"}, "large, *", "1 items · *"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.items);
        for (const char* const each : c.selected) {
            clickAt(
                row(each),
                Qt::LeftButton,
                each == c.selected.front() ? Qt::NoModifier : Qt::ControlModifier);
        }
        EXPECT_TRUE(sees(QString::number(c.selected.size()) + " selected"));
        click(kRow, c.clicked, Qt::RightButton);
        choose("Review & Move to Trash…");
        waitToSee("Review before cleaning");
        EXPECT_TRUE(sees(c.items));
        press("Cancel");
        await([&] { return !sees("Review before cleaning"); }, "its end");
    }
    press("Reveal");
    click(kRow, "small, *", Qt::RightButton);
    choose("Copy Path");
    await(
        [&] { return QGuiApplication::clipboard()->text().toStdString() == at("tree/small"); },
        "the path");
    click(kRow, "small, *", Qt::RightButton);
    EXPECT_FALSE(find(QAccessible::MenuItem, "Open Folder")->isEnabled());
    key(Qt::Key_Escape);
    await([&] { return find(QAccessible::MenuItem, "Open Folder") == nullptr; }, "its end");
    click(kRow, "large, *", Qt::RightButton);
    choose("Reveal in Files");
    await([&] { return opened().size() == 2; }, "the file manager");
    click(kRow, "large, *", Qt::RightButton);
    choose("Open Folder");
    await([&] { return shownFolder() == "large"; }, "the folder");
    click(kRow, "inner, *", Qt::RightButton);
    choose("Create Cleanup Rule from This…");
    await([&] { return model().ruleDraft() != nullptr; }, "the editor");
    EXPECT_EQ(model().ruleDraft()->property("name").toString(), "inner");
}

TEST_F(AnalyzerScreenTest, TrashesWhatIsSelectedByTheKeyboardAlone) {
    model().setScanRoot(at("tree"));
    open(Section::analyzer);
    key(Qt::Key_R, Qt::ControlModifier);
    finish();
    tabTo(QAccessible::List, "Space Analyzer");
    key(Qt::Key_Right);
    EXPECT_EQ(shownFolder(), "large");
    key(Qt::Key_Left);
    EXPECT_EQ(shownFolder(), "tree");
    settle();
    key(Qt::Key_Down);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(sees("2 selected")) << focused().toStdString();
    expectLaidOut();
    tabTo(QAccessible::PageTabList, "View");
    key(Qt::Key_Right);
    EXPECT_EQ(model().analyzerMode(), 1);
    EXPECT_TRUE(sees("2 selected"));
    tabTo(QAccessible::Button, "Review & Clean…");
    key(Qt::Key_Return);
    waitToSee("Review before cleaning");
    key(Qt::Key_Return);
    finish();
    EXPECT_FALSE(exists(at("tree/small")));
    EXPECT_FALSE(exists(at("tree/stays")));
    EXPECT_TRUE(exists(at("tree/large")));
    EXPECT_FALSE(sees("2 selected"));
}

TEST_F(AnalyzerScreenTest, WorksByTheTreemapAsByTheList) {
    openScanned();
    click(QAccessible::RadioButton, "Treemap");
    EXPECT_EQ(model().analyzerMode(), 1);
    waitToSee("Double-click to open a folder");
    const QPointF inLarge = map().mapToScene({40, 40});
    QTest::mouseMove(&window(), inLarge.toPoint());
    await([&] { return sees("large · *"); }, "what is below the pointer");
    clickAt(inLarge);
    EXPECT_TRUE(sees("1 selected"));
    clickAt(inLarge, Qt::RightButton);
    choose("Review & Move to Trash…");
    waitToSee("Review before cleaning");
    // The tree goes away under the sheet: what was shown is what goes.
    model().startScan(at("tree"));
    finish();
    press("Clean *");
    finish();
    EXPECT_FALSE(exists(at("tree/large")));
    model().setShowResult(false);
    write("tree/large/inner/data", std::string(400'000, 'a'));
    model().startScan(at("tree"));
    finish();
    doubleClickAt(inLarge);
    EXPECT_EQ(shownFolder(), "large");
}

TEST_F(AnalyzerScreenTest, TakesADroppedFolderAndRefusesTheRest) {
    struct Case {
        const char* name;
        Section section;
        std::vector<std::string> paths;
        bool isTaken;
    };
    const std::string file = at("tree/small");
    const std::string folder = at("tree");
    const Case cases[] = {
        {"a file",              Section::analyzer,   {file},          false},
        {"nothing there",       Section::analyzer,   {at("missing")}, false},
        {"a file first",        Section::analyzer,   {file, folder},  false},
        {"a folder",            Section::analyzer,   {folder, file},  true },
        {"a file to search",    Section::largeFiles, {file},          false},
        {"a folder to search",  Section::largeFiles, {folder},        true },
        {"a file to compare",   Section::duplicates, {file},          false},
        {"a folder to compare", Section::duplicates, {folder},        true },
    };
    open(Section::analyzer);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        model().setSection(c.section);
        finish();
        EXPECT_EQ(drop(c.paths, {600, 400}), c.isTaken);
        EXPECT_EQ(model().isScanning(), c.isTaken && c.section == Section::analyzer);
        EXPECT_EQ(model().isFindingLarge(), c.isTaken && c.section == Section::largeFiles);
        EXPECT_EQ(model().isFindingDupes(), c.isTaken && c.section == Section::duplicates);
        finish();
    }
    EXPECT_EQ(model().largeRoot(), folder);
    EXPECT_EQ(model().dupRoot(), folder);
}

}  // namespace
}  // namespace Brimlo
