#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Brimlo {
namespace {

/// What GLib's own Trash makes of ours.
class CleanerInteropTest : public Testing::CleaningHome {
protected:
    /// What `gio` prints on a message bus of its own.
    static std::string gio(const std::string& arguments) {
        const std::string command =
            "LC_ALL=C.UTF-8 timeout 20 dbus-run-session -- gio " + arguments + " 2>/dev/null";
        std::string output;
        if (FILE* pipe = popen(command.c_str(), "r")) {  // NOLINT(cert-env33-c): fixed words
            for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) {
                output += static_cast<char>(byte);
            }
            pclose(pipe);
        }
        return output;
    }
};

TEST_F(CleanerInteropTest, OtherProgramsSeeAndRestoreOurItems) {
    const std::string long255(255, 'l');
    // How `gio` shows a name: it escapes what is not ASCII.
    const std::pair<std::string, std::string> cases[] = {
        {"plain",  "plain"      },
        {"a b",    "a b"        },
        {"100%25", "100%25"     },
        {"\u00e9", R"(\xc3\xa9)"},
        {"#?&;",   "#?&;"       },
        {long255,  long255      },
    };
    std::vector<JournalEntry> entries;
    for (const auto& [name, shown] : cases) {
        entries.push_back(trash(write("work/" + name, name)));
    }
    const std::string listing = gio("trash --list");
    if (listing.empty()) {
        GTEST_SKIP() << "gio, its Trash service or dbus-run-session is missing";
    }
    for (const auto& [name, shown] : cases) {
        EXPECT_TRUE(("\n" + listing).contains("\t" + at("work/" + shown) + "\n")) << listing;
    }
    gio("trash --restore 'trash:///a%20b'");
    EXPECT_EQ(Testing::contentOf(at("work/a b")), "a b");
    EXPECT_FALSE(Testing::exists(noteOf("a b")));
    EXPECT_EQ(undo(entries[1]), std::unexpected(std::string{"Nothing left to restore from"}));
    EXPECT_EQ(undo(entries[2]), at("work/100%25"));
}

TEST_F(CleanerInteropTest, ItemsOfOtherProgramsAreLeftAlone) {
    const std::string path = write("work/item", "theirs");
    if (gio("trash '" + path + "'"); Testing::exists(path)) {
        GTEST_SKIP() << "gio or dbus-run-session is missing";
    }
    EXPECT_EQ(trash(write("work/item", "ours")).trashPath, inTrash("item.2"));
    EXPECT_EQ(cleaner_.purgeOwnTrash(0, false).bytes, kItemSize);
    EXPECT_EQ(Testing::contentOf(inTrash("item")), "theirs");
    EXPECT_TRUE(Testing::exists(noteOf("item")));
}

}  // namespace
}  // namespace Brimlo
