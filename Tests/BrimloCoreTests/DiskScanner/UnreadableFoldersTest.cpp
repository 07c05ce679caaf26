#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include "BrimloCore/Support/VolumeInfo.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

constexpr const char* kTrash =
    "The Trash is protected by macOS. Full Disk Access lets Brimlo see and size it.";
constexpr const char* kPrivate =
    "Private Apple or app data that macOS only shows to apps with Full Disk Access.";
constexpr const char* kDenied =
    "macOS or the folder's owner denied access. If it is yours, check its permissions.";

TEST(UnreadableFoldersTest, NamesTheAreaAndWhy) {
    struct Case {
        const char* path;
        const char* area;
        const char* reason;
    };
    const Case cases[] = {
        {"/Users/a/Library/Mail/V10",         "~/Library/Mail",             kPrivate},
        {"/Users/a/Library/Group Containers", "~/Library/Group Containers", kPrivate},
        {"/Users/a/Library/com.apple.foo/x",  "~/Library/com.apple.foo",    kPrivate},
        {"/Users/a/Library/mail/V10",         "~/Library/mail",             kDenied },
        {"/Users/a/.Trash",                   "~/.Trash",                   kTrash  },
        {"/Users/a/.Trash/x/y",               "~/.Trash",                   kTrash  },
        {"/Users/a/Library",                  "~/Library",                  kDenied },
        {"/Users/a/Documents/x",              "~/Documents",                kDenied },
        {"/Users/a//Documents//x",            "~/Documents",                kDenied },
        {"/private/var/db",                   "/private",                   kDenied },
        {"/System/Volumes",                   "/System",                    kDenied },
        {"/Library/Caches/x",                 "~/Library/Caches",           kDenied },
        {"/Users/ab/x",                       "/Users",                     kDenied },
        {"/",                                 "/",                          kDenied },
        {"",                                  "",                           kDenied },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        const UnreadableArea expected{c.area, 1, c.path, c.reason};
        EXPECT_EQ(
            UnreadableFolders::group({c.path}, "/Users/a"), std::vector<UnreadableArea>{expected});
    }
}

TEST(UnreadableFoldersTest, CountsByArea) {
    const std::vector<std::string> paths{"/b/1", "/a/1", "/c/9", "/c/1", "/c/5"};
    const std::vector<UnreadableArea> areas{
        {"/c", 3, "/c/9", kDenied},
        {"/a", 1, "/a/1", kDenied},
        {"/b", 1, "/b/1", kDenied},
    };
    EXPECT_EQ(UnreadableFolders::group(paths, "/Users/a"), areas);
    EXPECT_EQ(UnreadableFolders::group({}, "/Users/a"), std::vector<UnreadableArea>{});
}

TEST(VolumeInfoTest, TellsWhatAVolumeHolds) {
    const auto root = VolumeInfo::snapshot("/");
    ASSERT_TRUE(root);
    EXPECT_GT(root->total, 0);
    EXPECT_GE(root->available, 0);
    EXPECT_EQ(root->used(), root->total - root->available);
    EXPECT_EQ(VolumeInfo::snapshot("/missing"), std::nullopt);
    EXPECT_EQ((VolumeInfo::Snapshot{100, 30, 45}).purgeable(), 15);
    EXPECT_EQ((VolumeInfo::Snapshot{100, 30, 20}).purgeable(), 0);
}

}  // namespace
}  // namespace Brimlo
