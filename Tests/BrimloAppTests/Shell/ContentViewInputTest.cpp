#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/Journal/JournalEntry.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QLocale>
#include <gmock/gmock.h>

namespace Brimlo {
namespace {

using Testing::LayoutAudit::Elision;

constexpr std::int64_t kPetabytes = 9'007'199'254'740'000;

/// Names as no one would give them, but as file systems take them.
const std::vector<std::string>& oddNames() {
    static const std::vector<std::string> names{
        "שלום עולם \u202Egnp.exe",
        "👩‍👩‍👧‍👦 family 🏳️‍🌈",
        "two\nlines\r\tand a tab",
        std::string(255, 'W'),
        "not \xff\xfe UTF-8",
        "<b>bold</b> &amp; <img src='x'>",
        " ",
        "%1 %2 %n",
    };
    return names;
}

class ContentViewInputTest : public Testing::WindowTest {
protected:
    /// A folder that was never on any disk.
    static std::shared_ptr<FileNode> folderOf(const int count, const std::int64_t size) {
        const auto tree = std::make_shared<FileTree>();
        FileNode& folder = tree->add(
            {.name = "/a folder", .size = size * count, .fileCount = count, .modified = {}});
        std::vector<FileNode*> nodes;
        for (int i = 0; i < count; ++i) {
            const auto place = static_cast<std::size_t>(i);
            const std::string name =
                place < oddNames().size() ? oddNames()[place] : std::to_string(i);
            nodes.push_back(&tree->add(
                {.name = name,
                 .parent = &folder,
                 .size = size - i,
                 .fileCount = 1'000'000'000 + i,
                 .modified = {}}));
            nodes.back()->isDirectory = i % 3 == 0;
        }
        tree->setChildren(folder, nodes);
        return folder.shared();
    }

    void expectSane() { expectLaidOut(Elision::ofAll); }
};

TEST_F(ContentViewInputTest, TheAnalyzerTakesAnyNumberOfAnyNames) {
    open(Section::Analyzer);
    for (const int count : {0, 1, 30'000}) {
        SCOPED_TRACE(count);
        model().analyzer()->setCurrent(folderOf(count, kPetabytes / std::max(1, count)));
        for (const int mode : {0, 1}) {
            model().analyzer()->setAnalyzerMode(mode);
            settle();
            expectSane();
        }
        model().analyzer()->setAnalyzerMode(0);
    }
    tabTo(QAccessible::List, "Space Analyzer");
    key(Qt::Key_A, Qt::ControlModifier);
    const QString count = QLocale{}.toString(30'000);
    waitToSee(count + " selected");
    expectSane();
    press("Review & Clean…");
    const QString staying = "Would be refused and stays · " + count + " items";
    waitToSee(staying);
    EXPECT_FALSE(isEnabled("Clean *"));
    expectSane();
    key(Qt::Key_Escape);
    await([&] { return !sees(staying); }, "its end");
    for (int i = 0; i < 12; ++i) {
        key(Qt::Key_PageDown);
        window().grabWindow();
    }
    key(Qt::Key_End);
    expectSane();
}

TEST_F(ContentViewInputTest, TheListsTakeAnyNames) {
    for (const std::string& name : oddNames()) {
        fill("tree/" + name, 1'200'000);
    }
    model().duplicates()->setRoot(at("tree"));
    model().duplicates()->find();
    finish();
    model().cleanup()->run(CleanPlan{{{.path = at("tree/" + oddNames()[3]), .size = kPetabytes}}});
    finish();
    open(Section::Duplicates);
    waitToSee("Cleanup *");
    expectSane();
    press("Done");
    model().setSection(Section::History);
    click(QAccessible::ListItem, "WWWW*");
    expectSane();
    model().setSection(Section::Duplicates);
    expectSane();
    press("Trash extras");
    finish();
    waitToSee("Cleanup *");
    model().rules()->newRuleDraft(at("tree/" + oddNames()[2]), oddNames()[0]);
    await([&] { return sees("New cleanup rule"); }, "the editor");
    expectSane();
}

TEST_F(ContentViewInputTest, HistoryTakesAHundredThousandItems) {
    std::string text = "[";
    const Uuid batch = Uuid::random();
    for (int i = 0; i < 100'000; ++i) {
        const auto place = static_cast<std::size_t>(i) % oddNames().size();
        JournalEntry entry{.id = Uuid::random(), .originalPath = "/x/" + oddNames()[place]};
        entry.trashPath = "/gone";
        entry.size = kPetabytes / 100'000;
        entry.batchID = i < 50'000 ? batch : Uuid::random();
        text += i == 0 ? "" : ",";
        entry.encode(text);
    }
    write(StoragePaths::journal().substr(home().size() + 1), text + "]");
    open(Section::History);
    finish();
    EXPECT_EQ(model().history()->batches().size(), 50'001U);
    expectSane();
    tabTo(QAccessible::List, "Removed by Brimlo");
    key(Qt::Key_Space);
    key(Qt::Key_End);
    expectSane();
}

TEST_F(ContentViewInputTest, ALongBannerScrollsAndLeavesTheScreenItsPlace) {
    open();
    model().banner()->show(QString("A sentence that goes on and on. ").repeated(63));
    waitToSee("A sentence*");
    expectSane();
    EXPECT_LT(find(QAccessible::Notification, "A sentence*")->height(), 150);
    EXPECT_GT(find(QAccessible::Pane, "Overview")->height(), 450);
    model().banner()->show(QString(2000, 'W'));
    waitToSee("WWWW*");
    expectSane();
}

}  // namespace
}  // namespace Brimlo
