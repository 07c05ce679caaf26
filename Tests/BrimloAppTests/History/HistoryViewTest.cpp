#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/WindowTest.h"

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::exists;

constexpr auto kRow = QAccessible::ListItem;

class HistoryViewTest : public Testing::WindowTest {
protected:
    void trash(const char* path) {
        write(path);
        model().cleanup()->run(CleanPlan{{{.path = at(path), .size = 7}}});
        finish();
        model().cleanup()->setShowResult(false);
    }
};

TEST_F(HistoryViewTest, ListsWhatWentAndPutsItBack) {
    open(Section::History);
    EXPECT_TRUE(sees("Nothing removed yet."));
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
    const QQuickItem& row = get(kRow, "one, *");
    clickAt(row.mapToScene({row.width() - 50, row.height() / 2}));
    finish();
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

    // Another program empties the Trash while something else is on screen.
    trash("docs/three");
    key(Qt::Key_1, Qt::ControlModifier);
    std::filesystem::remove(at(".local/share/Trash/files/three"));
    key(Qt::Key_7, Qt::ControlModifier);
    finish();
    EXPECT_TRUE(sees("three, *"));
    EXPECT_EQ(find(QAccessible::Button, "Undo all"), nullptr);
}

}  // namespace
}  // namespace Brimlo
