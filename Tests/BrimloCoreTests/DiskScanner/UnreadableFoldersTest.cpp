#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include "BrimloCore/Platform/Privacy.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

TEST(UnreadableFoldersTest, NamesTheArea) {
    struct Case {
        const char* path;
        const char* area;
    };
    const Case cases[] = {
        {"/Users/a/Library/Mail/V10",         "~/Library/Mail"            },
        {"/Users/a/Library/Group Containers", "~/Library/Group Containers"},
        {"/Users/a/Library/com.apple.foo/x",  "~/Library/com.apple.foo"   },
        {"/Users/a/Library/mail/V10",         "~/Library/mail"            },
        {"/Users/a/.Trash",                   "~/.Trash"                  },
        {"/Users/a/.Trash/x/y",               "~/.Trash"                  },
        {"/Users/a/Library",                  "~/Library"                 },
        {"/Users/a/Documents/x",              "~/Documents"               },
        {"/Users/a//Documents//x",            "~/Documents"               },
        {"/private/var/db",                   "/private"                  },
        {"/System/Volumes",                   "/System"                   },
        {"/Library/Caches/x",                 "~/Library/Caches"          },
        {"/Users/ab/x",                       "/Users"                    },
        {"/",                                 "/"                         },
        {"",                                  ""                          },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const UnreadableArea expected{c.area, 1, c.path, Platform::reasonUnreadable(c.area)};
        EXPECT_EQ(
            UnreadableFolders::group({c.path}, "/Users/a"), std::vector<UnreadableArea>{expected});
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
    EXPECT_EQ(
        UnreadableFolders::group(std::vector<std::string>{}, "/Users/a"),
        std::vector<UnreadableArea>{});
}

}  // namespace
}  // namespace Brimlo
