#include "BrimloCore/Platform/Linux/TrashInfo.h"

#include "Support/TempHome.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace Brimlo::Platform {
namespace {

using Text = std::optional<std::string>;

TEST(TrashInfoTest, TellsThePathAndTheLocalTime) {
    setenv("TZ", "XXX-05:30", 1);
    tzset();
    const TrashInfo info{.path = "/a b/100%\n\u00e9", .entryID = "ID"};
    EXPECT_EQ(
        info.text(86'399),
        "[Trash Info]\n"
        "Path=/a%20b/100%25%0A%C3%A9\n"
        "DeletionDate=1970-01-02T05:29:59\n"
        "X-Brimlo-Entry=ID\n");
    EXPECT_EQ(
        (TrashInfo{.path = "x", .entryID = {}}.text(0)),
        "[Trash Info]\nPath=x\nDeletionDate=1970-01-01T05:30:00\n");
}

TEST(TrashInfoTest, BringsEachByteBack) {
    for (int byte = 1; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        std::string path = "/before";
        path.append(1, static_cast<char>(byte)).append("0Aafter");
        const std::string text = TrashInfo{.path = path, .entryID = "ID"}.text(0);
        EXPECT_EQ(std::ranges::count(text, '\n'), 4);
        EXPECT_TRUE(
            std::ranges::all_of(text, [](char c) { return c == '\n' || (c > 31 && c < 127); }));
        const auto info = TrashInfo::parse(text);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->path, path);
        EXPECT_EQ(info->entryID, "ID");
    }
}

TEST(TrashInfoTest, ReadsTheNotesOfOthers) {
    struct Case {
        const char* name;
        std::string text;
        Text path;
        Text entryID = std::nullopt;
    };
    const Case cases[] = {
        {"nothing",               "",                                           std::nullopt                  },
        {"no path",               "[Trash Info]\nX-Brimlo-Entry=ID\n",          std::nullopt                  },
        {"no line end",           "[Trash Info]\nPath=/a",                      "/a"                          },
        {"keys in another order", "[Trash Info]\nX-Brimlo-Entry=ID\nPath=/a\n", "/a",                           "ID"},
        {"the first of two counts",
         "Path=/a\nPath=/b\nX-Brimlo-Entry=1\nX-Brimlo-Entry=2\n",                                           "/a",
         "1"},
        {"cut escape",                     "Path=/a%2\n",                                                                 std::nullopt                                                                                   },
        {"escape of no digits",           "Path=/a%+1\n",std::nullopt},
        {"lower-case escape",           "Path=/a%2fb\n",                                                                 "/a/b"                                                                                                                                                               },
        {"raw bytes",                 "Path=/a b\xFF\n","/a b\xFF"},
        {"escaped NUL",             "Path=/a%00b\n",                                                             std::string("/a\0b",                                                                                                                                                                                                                              4)},
        {"key with more letters",    "Pathology=/a\n",std::nullopt},
        {"only line ends",    "\n\n\n",                                                   std::nullopt                                                                                                                                                                                                                                                                                              },
        {"empty path",            "Path=\n",""},
        {"other keys",   "Path=/a\nDeletionDate=soon\nX-Other=1\n# x\n",                                                    "/a"                                                                                                                                                                                                                                                                                                                                                        },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto info = TrashInfo::parse(c.text);
        EXPECT_EQ(info ? Text{info->path} : std::nullopt, c.path);
        EXPECT_EQ(info ? info->entryID : std::nullopt, c.entryID);
    }
}

TEST(TrashInfoTest, StaysInItsLimits) {
    constexpr std::size_t kLongest = 255 - kTrashInfoSuffix.size();
    const std::string names[] = {
        "a",
        ".a",
        "a.",
        ".",
        "a.tar.gz",
        std::string(255, 'a'),
        std::string(255, '.'),
        std::string(223, 'a') + "." + std::string(31, 'b'),
        std::string(100, 'a') + "." + std::string(154, 'b'),
        "." + std::string(254, 'a'),
        std::string(250, 'a') + ".gz",
        "\xC3" + std::string(254, '\xA9'),
    };
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        std::vector<std::string> given;
        for (const int attempt : {1, 2, 10, 10'000}) {
            const std::string inTrash = nameInTrash(name, attempt);
            EXPECT_LE(inTrash.size(), kLongest);
            EXPECT_EQ(std::ranges::count(given, inTrash), 0) << inTrash;
            given.push_back(inTrash);
        }
        if (name.size() <= kLongest) {
            EXPECT_EQ(given.front(), name);
        }
    }
    EXPECT_EQ(nameInTrash("a.tar.gz", 2), "a.tar.2.gz");
    EXPECT_EQ(nameInTrash(".bashrc", 3), ".bashrc.3");
}

}  // namespace
}  // namespace Brimlo::Platform
