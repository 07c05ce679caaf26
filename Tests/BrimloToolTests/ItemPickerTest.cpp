#include "brimlo/ItemPicker.h"

#include "Support/TempHome.h"

namespace Brimlo {
namespace {

using Key = ItemPicker::Key;

TEST(ItemPickerTest, TicksAndSumsWhatTheKeysSay) {
    Suggestion first{.id = "first"};
    first.items = {
        {.path = "/a", .size = 5},
        {.path = "/b", .size = 3}
    };
    first.preselectedPaths = {"/b"};
    Suggestion second{.id = "second"};
    for (int i = 0; i < 30; ++i) {
        second.items.push_back({.path = "/many/" + std::to_string(i), .size = 1});
    }
    const struct {
        std::vector<Key> keys;
        std::string marks;  ///< Of the rows first, /a, /b, second, /many.
        std::size_t cursor;
        std::size_t top;
        std::int64_t bytes;
    } cases[] = {
        {{},                                           "-_x__", 0, 0, 3 },
        {{Key::toggle},                                "xxx__", 0, 0, 8 },
        {{Key::toggle, Key::toggle},                   "_____", 0, 0, 0 },
        {{Key::up, Key::down, Key::toggle},            "xxx__", 1, 0, 8 },
        {{Key::pageDown, Key::toggle},                 "_____", 2, 1, 0 },
        {{Key::last, Key::toggle},                     "-_xxx", 4, 3, 33},
        {{Key::last, Key::down, Key::up, Key::toggle}, "-_xxx", 3, 3, 33},
        {{Key::last, Key::pageUp, Key::pageUp},        "-_x__", 0, 0, 3 },
        {{Key::last, Key::first},                      "-_x__", 0, 0, 3 },
    };
    constexpr std::size_t kHeight = 2;
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        ItemPicker picker{
            {first, second}
        };
        for (const Key key : c.keys) {
            picker.press(key, kHeight);
            static_cast<void>(picker.top(kHeight));
        }
        std::string marks;
        for (const ItemPicker::Row& row : picker.rows()) {
            marks += "_-x"[static_cast<int>(picker.mark(row))];
        }
        EXPECT_EQ(marks, c.marks);
        EXPECT_EQ(picker.cursor(), c.cursor);
        EXPECT_EQ(picker.top(kHeight), c.top);
        EXPECT_EQ(picker.figures().bytes, c.bytes);
        EXPECT_EQ(picker.plan().totalBytes(), c.bytes);
    }
    ItemPicker shrunk{{first}};
    shrunk.press(Key::last, 9);
    EXPECT_EQ(shrunk.top(9), 0U);
    EXPECT_EQ(shrunk.top(0), 2U);
}

}  // namespace
}  // namespace Brimlo
