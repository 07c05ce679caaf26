#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Analyzer/TreemapItem.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloAppTests/Support/WindowTest.h"

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

class AnalyzerViewTest : public Testing::WindowTest {
protected:
    AnalyzerViewTest() {
        write("tree/large/inner/data", std::string(400'000, 'a'));
        write("tree/small", std::string(100'000, 'b'));
        write("tree/stays", std::string(50'000, 'c'));
        makeFolder("tree/empty");
    }

    void openScanned() {
        model().analyzer()->startScan(at("tree"));
        open(Section::Analyzer);
        ASSERT_TRUE(model().analyzer()->hasTree());
    }

    [[nodiscard]] std::vector<std::string> rows() const {
        return seen({"large, *", "small, *", "stays, *", "empty, *", "inner, *"});
    }
    [[nodiscard]] QPointF row(const char* name) const { return middle(get(kRow, name)); }
    [[nodiscard]] std::string shownFolder() {
        return std::string{model().analyzer()->current()->name()};
    }

    [[nodiscard]] TreemapItem& map() const {
        auto* const map = qobject_cast<TreemapItem*>(find(QAccessible::Graphic, "Treemap"));
        EXPECT_NE(map, nullptr);
        return *map;
    }
};

TEST_F(AnalyzerViewTest, ShowsTheFirstStateThatHolds) {
    const std::vector<const char*> states{
        "Cancel", "tree", "Treemap", "See exactly what is using your disk."};
    model().analyzer()->setScanRoot("/usr");
    open(Section::Analyzer);
    EXPECT_THAT(seen(states), ElementsAre("Treemap", "See exactly what is using your disk."))
        << "the treemap's button is always there";
    {
        const Testing::HeldWork held;
        model().analyzer()->startScan(at("tree"));
        EXPECT_THAT(seen(states), ElementsAre("Cancel", "tree", "Treemap")) << "of the toolbar";
        EXPECT_FALSE(isEnabled("Scan"));
    }
    finish();
    EXPECT_THAT(rows(), SizeIs(4));
    EXPECT_FALSE(sees("See exactly what is using your disk."));
    // A scan hides the tree, and one that is cancelled leaves nothing.
    {
        const Testing::HeldWork held;
        model().analyzer()->startScan("/usr");
        EXPECT_THAT(rows(), IsEmpty());
        press("Cancel");
    }
    finish();
    EXPECT_TRUE(sees("See exactly what is using your disk."));
    {
        const Testing::HeldWork held;
        press("Scan System disk");
        EXPECT_EQ(model().analyzer()->scanRoot(), "/");
        key(Qt::Key_Escape);
    }
    finish();
    EXPECT_FALSE(model().analyzer()->hasTree());
}

TEST_F(AnalyzerViewTest, SetsTheFolderByItsMenuWithoutAScan) {
    model().analyzer()->setScanRoot(at("tree"));
    open(Section::Analyzer);
    press("tree");
    choose("System disk");
    await([&] { return model().analyzer()->scanRoot() == "/"; }, "the disk");
    press("/");
    choose("Choose folder…");
    answerPanel(at("tree"));
    await([&] { return model().analyzer()->scanRoot() == at("tree"); }, "the folder");
    EXPECT_FALSE(model().analyzer()->isScanning());
    press("Scan");
    finish();
    EXPECT_TRUE(model().analyzer()->hasTree());
}

TEST_F(AnalyzerViewTest, SortsByMenuColumnAndDirection) {
    openScanned();
    press("Sort by");
    choose("Items");
    await([&] { return model().analyzer()->rows()->order()->key() == "Items"; }, "the order");
    press("Reverse order");
    EXPECT_TRUE(model().analyzer()->rows()->order()->ascending());
    EXPECT_LT(row("empty, *").y(), row("large, *").y());
    press("Name");
    EXPECT_EQ(model().analyzer()->rows()->order()->key(), "Name");
    press("Name");
    EXPECT_FALSE(model().analyzer()->rows()->order()->ascending());
}

TEST_F(AnalyzerViewTest, DrillsByDoubleClickAndComesBackByCrumbs) {
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

TEST_F(AnalyzerViewTest, GoesByLettersIntoAFolderAndBackToIt) {
    openScanned();
    tabTo(QAccessible::List, "Space Analyzer");
    const auto expectCurrent = [&](const QString& name) {
        const QQuickItem& list = get(QAccessible::List, "Space Analyzer");
        await(
            [&] {
                const auto* row = list.property("currentItem").value<QQuickItem*>();
                return row != nullptr && row->property("text").toString().startsWith(name);
            },
            name);
    };
    type("st");
    expectCurrent("stays");
    QTest::qWait(1200);  // Later letters begin anew.
    type("L");
    expectCurrent("large");
    for (const auto& [up, modifiers] : {
             std::pair<int, Qt::KeyboardModifiers>{Qt::Key_Up,        Qt::AltModifier},
             std::pair<int, Qt::KeyboardModifiers>{Qt::Key_Backspace, Qt::NoModifier }
    }) {
        key(Qt::Key_Right);
        await([&] { return shownFolder() == "large"; }, "the folder");
        key(up, modifiers);
        await([&] { return shownFolder() == "tree"; }, "the folder above");
        expectCurrent("large");
    }
    key(Qt::Key_Right);
    click(QAccessible::RadioButton, "Treemap");
    await([&] { return find(QAccessible::Graphic, "Treemap") != nullptr; }, "the treemap");
    clickAt(middle(map()));
    key(Qt::Key_Up, Qt::AltModifier);
    await([&] { return shownFolder() == "tree"; }, "the folder above the treemap's");
}

TEST_F(AnalyzerViewTest, ActsOnTheRowOrOnTheSelectionThatItIsIn) {
    openScanned();
    const std::tuple<std::vector<const char*>, const char*, const char*> cases[] = {
        {{"small, *"},             "stays, *", "1 items · *"},
        {{"small, *", "stays, *"}, "stays, *", "2 items · *"},
        {{"small, *", "stays, *"}, "large, *", "1 items · *"},
    };
    for (const auto& [selected, clicked, items] : cases) {
        SCOPED_TRACE(clicked);
        Qt::KeyboardModifiers held = Qt::NoModifier;
        for (const char* const each : selected) {
            clickAt(row(each), Qt::LeftButton, held);
            held = Qt::ControlModifier;
        }
        EXPECT_TRUE(sees(QString::number(selected.size()) + " selected"));
        click(kRow, clicked, Qt::RightButton);
        choose("Review & Move to Trash…");
        waitToSee("Review before cleaning");
        EXPECT_TRUE(sees(items));
        press("Cancel");
        await([&] { return !sees("Review before cleaning"); }, "its end");
        EXPECT_TRUE(focused().startsWith(QString{clicked}.chopped(1)))
            << "the row has the keys again";
    }
    click(kRow, "small, *", Qt::RightButton);
    choose("Copy Path");
    await(
        [&] { return QGuiApplication::clipboard()->text().toStdString() == at("tree/small"); },
        "the path");
    EXPECT_TRUE(focused().startsWith("small, "));
    click(kRow, "small, *");
    key(Qt::Key_F10, Qt::ShiftModifier);
    choose("Reveal in Files");
    await([&] { return opened().size() == 1; }, "the file manager");
    click(kRow, "large, *", Qt::RightButton);
    choose("Open Folder");
    await([&] { return shownFolder() == "large"; }, "the folder");
    click(kRow, "inner, *", Qt::RightButton);
    choose("Create Cleanup Rule from This…");
    await([&] { return model().rules()->ruleDraft() != nullptr; }, "the editor");
    EXPECT_EQ(model().rules()->ruleDraft()->property("name").toString(), "inner");
}

TEST_F(AnalyzerViewTest, TrashesWhatIsSelectedByTheKeyboardAlone) {
    model().analyzer()->setScanRoot(at("tree"));
    open(Section::Analyzer);
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

TEST_F(AnalyzerViewTest, TellsWhatTheSelectionFrees) {
    std::filesystem::create_hard_link(at("tree/small"), at("tree/large/other name"));
    openScanned();
    click(kRow, "small, *");
    waitToSee("*, frees 0 bytes");
    clickAt(row("stays, *"), Qt::LeftButton, Qt::ControlModifier);
    waitToSee("*, frees 53 KB");
    clickAt(row("large, *"), Qt::LeftButton, Qt::ControlModifier);
    await([&] { return !sees("*, frees 53 KB"); }, "another selection");
    QTest::qWait(500);  // A selection is measured once it rests.
    finish();
    EXPECT_FALSE(sees("*, frees *")) << "both names go";
}

TEST_F(AnalyzerViewTest, LeavesWhatIsUntickedInTheReview) {
    openScanned();
    clickAt(row("small, *"));
    clickAt(row("stays, *"), Qt::LeftButton, Qt::ControlModifier);
    press("Review & Clean…");
    waitToSee("2 items · *");
    tabTo(QAccessible::List, "Items");
    key(Qt::Key_End);
    key(Qt::Key_Space);
    EXPECT_TRUE(sees("1 items · *"));
    press("Clean *");
    finish();
    EXPECT_FALSE(exists(at("tree/small")));
    EXPECT_TRUE(exists(at("tree/stays")));
    press("Done");
    waitToSee("stays, *");
    EXPECT_THAT(rows(), ElementsAre("large, *", "stays, *", "empty, *"));
}

TEST_F(AnalyzerViewTest, TakesNothingOfWhatIsMergedIntoOneRow) {
    for (int i = 0; i < 45; ++i) {
        write("tree/tiny" + std::to_string(i));
    }
    write("tree/film", std::string(5 << 20, 'd'));
    openScanned();
    click(kRow, "49 small items, *", Qt::RightButton);
    await([&] { return find(QAccessible::MenuItem, "Copy Path") != nullptr; }, "the menu");
    EXPECT_FALSE(find(QAccessible::MenuItem, "Review & Move to Trash…")->isEnabled());
    key(Qt::Key_Escape);
    await([&] { return find(QAccessible::MenuItem, "Copy Path") == nullptr; }, "its end");
    tabTo(QAccessible::List, "Space Analyzer");
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(sees("2 selected"));
    press("Review & Clean…");
    waitToSee("1 items · *");
    press("Clean *");
    finish();
    EXPECT_FALSE(exists(at("tree/film")));
    EXPECT_TRUE(exists(at("tree/tiny0")) && exists(at("tree/small")));
}

TEST_F(AnalyzerViewTest, WorksByTheTreemapAsByTheList) {
    openScanned();
    tabTo(QAccessible::PageTabList, "View");
    key(Qt::Key_Right);
    EXPECT_EQ(model().analyzer()->analyzerMode(), 1);
    waitToSee("Double-click to open a folder");
    const QPointF inLarge = map().mapToScene({40, 40});
    QTest::mouseMove(&window(), inLarge.toPoint());
    await([&] { return sees("large · *"); }, "what is below the pointer");
    const QSizeF size = map().size();
    clickAt(inLarge);
    waitToSee("1 selected");
    finish();
    EXPECT_EQ(map().size(), size);
    clickAt(inLarge, Qt::RightButton);
    choose("Review & Move to Trash…");
    waitToSee("Review before cleaning");
    // The tree goes away under the sheet: what was shown is what goes.
    model().analyzer()->startScan(at("tree"));
    finish();
    press("Clean *");
    finish();
    EXPECT_FALSE(exists(at("tree/large")));
    model().cleanup()->setShowResult(false);
    write("tree/large/inner/data", std::string(400'000, 'a'));
    model().analyzer()->startScan(at("tree"));
    finish();
    press("Video");
    EXPECT_TRUE(model().analyzer()->rows()->isFaded(0));
    press("Video");
    clickAt(inLarge);
    key(Qt::Key_F10, Qt::ShiftModifier);
    choose("Open Folder");
    await([&] { return shownFolder() == "large"; }, "the folder");
    key(Qt::Key_Up, Qt::AltModifier);
    await([&] { return shownFolder() == "tree"; }, "the folder around it");
    doubleClickAt(inLarge);
    EXPECT_EQ(shownFolder(), "large");
}

TEST_F(AnalyzerViewTest, TakesADroppedFolderAndRefusesTheRest) {
    const std::string file = at("tree/small");
    const std::string folder = makeFolder("100%25 #1? ü");
    const std::tuple<const char*, Section, std::vector<std::string>, bool> cases[] = {
        {"nothing there",       Section::Analyzer,   {at("missing")}, false},
        {"a file first",        Section::Analyzer,   {file, folder},  false},
        {"a folder",            Section::Analyzer,   {folder, file},  true },
        {"a file to search",    Section::LargeFiles, {file},          false},
        {"a folder to search",  Section::LargeFiles, {folder},        true },
        {"a file to compare",   Section::Duplicates, {file},          false},
        {"a folder to compare", Section::Duplicates, {folder},        true },
    };
    open(Section::Analyzer);
    for (const auto& [name, section, paths, isTaken] : cases) {
        SCOPED_TRACE(name);
        model().setSection(section);
        finish();
        EXPECT_EQ(drop(paths, {600, 400}), isTaken);
        EXPECT_EQ(model().analyzer()->isScanning(), isTaken && section == Section::Analyzer);
        EXPECT_EQ(model().largeFiles()->isSearching(), isTaken && section == Section::LargeFiles);
        EXPECT_EQ(model().duplicates()->isSearching(), isTaken && section == Section::Duplicates);
        if (isTaken) {
            drop({at("tree")}, {600, 400});  // No new name for what the search finds.
        }
        finish();
    }
    EXPECT_EQ(model().analyzer()->scanRoot(), folder);
    EXPECT_EQ(model().largeFiles()->root(), folder);
    EXPECT_EQ(model().duplicates()->root(), folder);
}

}  // namespace
}  // namespace Brimlo
