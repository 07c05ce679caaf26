#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include "BrimloCore/Platform/Privacy.h"

#include <gtest/gtest.h>

#include <utility>

namespace Brimlo {
namespace {

TEST(UnreadableFoldersTest, NamesTheArea) {
    const std::pair<const char*, const char*> cases[] = {
        {"/Users/a/Library/Mail/V10", "~/Library/Mail"  },
        {"/Users/a/.Trash/x/y",       "~/.Trash"        },
        {"/Users/a/Library",          "~/Library"       },
        {"/Users/a//Documents//x",    "~/Documents"     },
        {"/private/var/db",           "/private"        },
        {"/Library/Caches/x",         "~/Library/Caches"},
        {"/Users/ab/x",               "/Users"          },
        {"/",                         "/"               },
        {"",                          ""                },
    };
    for (const auto& [path, area] : cases) {
        const UnreadableArea expected{area, 1, path, Platform::reasonUnreadable(area)};
        EXPECT_EQ(UnreadableFolders::group({path}, "/Users/a"), std::vector{expected}) << path;
    }
}

TEST(UnreadableFoldersTest, CountsByArea) {
    const std::vector<std::string> paths{"/b/1", "/a/1", "/c/9", "/c/1", "/c/5"};
    const std::vector<UnreadableArea> areas{
        {"/c", 3, "/c/9", Platform::reasonUnreadable("/c")},
        {"/a", 1, "/a/1", Platform::reasonUnreadable("/a")},
        {"/b", 1, "/b/1", Platform::reasonUnreadable("/b")},
    };
    EXPECT_EQ(UnreadableFolders::group(paths, "/Users/a"), areas);
}

}  // namespace
}  // namespace Brimlo
