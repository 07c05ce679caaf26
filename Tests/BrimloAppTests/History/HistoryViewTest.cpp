#include "BrimloApp/History/History.h"
#include "BrimloApp/History/HistoryRows.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/WindowTest.h"

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::exists;

constexpr auto kRow = QAccessible::ListItem;

class HistoryViewTest : public Testing::WindowTest {
protected:
    template <typename... Paths>
    void trash(Paths... paths) {
        // A row under the pointer would stay in its place, and the new one come out of sight.
        pointAt({300, 20});
        model().cleanup()->run(CleanPlan{{{.path = write(paths), .size = 7}...}});
        finish();
        model().cleanup()->setShowResult(false);
    }

    /// Presses the button of a row.
    void undo(const char* name) {
        const QQuickItem& row = get(kRow, name);
        clickAt(row.mapToScene({row.width() - 50, row.height() / 2}));
        finish();
    }
};

TEST_F(HistoryViewTest, ListsWhatWentAndPutsItBack) {
    open(Section::History);
    EXPECT_TRUE(sees("Nothing removed yet."));
    expectLaidOut();
    EXPECT_EQ(find(QAccessible::Button, "Remove items Brimlo put in Trash"), nullptr);
    press("Find cleanable space");
    EXPECT_EQ(model().section(), Section::Clean);
    finish();
    key(Qt::Key_7, Qt::ControlModifier);
    finish();
    trash("docs/earlier");
    trash("docs/one");
    EXPECT_FALSE(sees("Nothing removed yet."));
    tabTo(QAccessible::List, "Removed by Brimlo");
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    const auto entry = QString("~/docs/one, ");
    EXPECT_TRUE(sees(entry + "In Trash · can Put Back, *"));
    expectLaidOut();
    expectReadable();
    undo("one, *");
    EXPECT_TRUE(exists(at("docs/one")));
    EXPECT_FALSE(exists(at("docs/earlier"))) << "of another cleanup";
    EXPECT_TRUE(sees(entry + "Restored, *"));
    press("Undo all");
    finish();
    EXPECT_TRUE(exists(at("docs/earlier")));
    EXPECT_EQ(find(QAccessible::Button, "Undo all"), nullptr);

    trash("docs/two");
    click(kRow, "two, *");
    const std::string inTrash = at(".local/share/Trash/files/two");
    for (const char* const answer : {"Cancel", "Delete for good"}) {
        EXPECT_TRUE(exists(inTrash));
        press("Remove items Brimlo put in Trash");
        waitToSee("1 item · 7 bytes");
        expectLaidOut();
        press(answer);
        await([&] { return !sees(answer); }, "its end");
    }
    finish();
    EXPECT_FALSE(exists(inTrash));
    EXPECT_TRUE(sees("~/docs/two, Gone, *"));
    EXPECT_EQ(find(QAccessible::Button, "Undo all"), nullptr);
    click(kRow, "two, *");
    EXPECT_FALSE(sees("~/docs/two, Gone, *"));

    trash("docs/kept", "docs/wanted");
    click(kRow, "2 items, *");
    undo("~/docs/wanted, *");
    EXPECT_TRUE(exists(at("docs/wanted")));
    EXPECT_FALSE(exists(at("docs/kept")));
    undo("2 items, *");
    EXPECT_TRUE(exists(at("docs/kept")));

    // Another program empties the Trash while something else is on screen.
    trash("docs/three");
    key(Qt::Key_1, Qt::ControlModifier);
    std::filesystem::remove(at(".local/share/Trash/files/three"));
    key(Qt::Key_7, Qt::ControlModifier);
    finish();
    EXPECT_TRUE(sees("three, *"));
    EXPECT_EQ(find(QAccessible::Button, "Undo all"), nullptr);
}

TEST_F(HistoryViewTest, SortsTheCleans) {
    open(Section::History);
    trash("docs/small");
    trash("docs/one", "docs/other");
    trash("docs/last");
    const auto place = [&](const char* name) { return get(kRow, name).property("index").toInt(); };
    EXPECT_EQ(place("last, *"), 0);
    press("Sort by");
    choose("Size");
    await([&] { return model().history()->rows()->order()->key() == "Size"; }, "the order");
    finish();
    EXPECT_EQ(place("2 items, *"), 0);
    press("Reverse order");
    EXPECT_EQ(place("2 items, *"), 2);
    // The items of a clean stay below it.
    click(kRow, "2 items, *");
    EXPECT_EQ(place("~/docs/other, *"), 3);
    press("Sort by");
    choose("Date");
    await([&] { return model().history()->rows()->order()->key() == "Date"; }, "the order");
    EXPECT_EQ(place("small, *"), 0);
}

TEST_F(HistoryViewTest, UndoesTheLastCleanAndListsWhatStayed) {
    open();
    for (const bool isByKeys : {true, false}) {
        SCOPED_TRACE(isByKeys);
        trash("docs/last");
        waitToSee("Moved 7 bytes to the Trash.");
        if (isByKeys) {
            key(Qt::Key_Z, Qt::ControlModifier);
        } else {
            press("Undo");
        }
        finish();
        EXPECT_TRUE(exists(at("docs/last")));
        EXPECT_EQ(find(QAccessible::Button, "Undo"), nullptr);
    }
    trash("docs/first", "docs/last");
    write("docs/last");
    press("Undo");
    finish();
    waitToSee("Not everything was put back");
    EXPECT_TRUE(exists(at("docs/first")));
    EXPECT_TRUE(sees(QString::fromStdString(
        at("docs/last") + ": Something already exists at " + at("docs/last"))));
    expectLaidOut();
    press("Done");
    await([&] { return !sees("Not everything was put back"); }, "its end");
}

}  // namespace
}  // namespace Brimlo
