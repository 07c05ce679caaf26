#include "BrimloCore/Platform/Linux/MountTable.h"

#include "Support/TempHome.h"

#include <tuple>

namespace Brimlo::Platform {
namespace {

using Point = std::optional<std::string>;

TEST(MountTableTest, ReadsEachLine) {
    const std::string rest = " rw,relatime shared:1 - ext4 /dev/sda1 rw\n";
    // With the mount point of the id 7.
    const std::tuple<const char*, std::string, Point> cases[] = {
        {"plain",                                     "7 1 8:1 / /mnt" + rest,                        "/mnt"           },
        {"escapes",                                   R"(7 1 8:1 / /a\040b\011c\012d\134040)" + rest, "/a b\tc\nd\\040"},
        {"bytes that other programs take for spaces",
         "7 1 8:1 / /a\rb\vc\fd" + rest,
         "/a\rb\vc\fd"                                                                                                 },
        {"second line",                               "6 1 8:1 / /" + rest + "7 6 8:2 / /b" + rest,   "/b"             },
        {"the first of two",                          "7 1 8:1 / /a" + rest + "7 1 8:1 / /b" + rest,  "/a"             },
        {"cut line",                                  "7 1 8:1 /\n",                                  std::nullopt     },
        {"a bad line before",                         "garbage\n7 1 8:1 / /mnt" + rest,               "/mnt"           },
    };
    for (const auto& [name, text, point] : cases) {
        EXPECT_EQ(MountTable::parse(text).mountPoint(7), point) << name;
    }
}

TEST(MountTableTest, FindsMountsByWholeComponents) {
    const MountTable table =
        MountTable::parse("1 0 8:1 / / x\n2 1 8:2 / /home/u/disk/in x\n3 1 8:3 / /srv\\040a x\n");
    const std::pair<const char*, bool> cases[] = {
        {"/home/u/disk/in",        true },
        {"/home/u/disk",           true },
        {"/home/u",                true },
        {"/home/u/disk/in/deeper", false},
        {"/srv a",                 true },
    };
    for (const auto& [path, isMounted] : cases) {
        EXPECT_EQ(table.hasMountAtOrBelow(path), isMounted) << path;
    }
}

TEST(MountTableTest, KnowsWhatAnswersWithoutAServer) {
    const MountTable table = MountTable::parse(
        "1 0 8:1 / / rw shared:1 - ext4 a rw\n2 1 0:2 / /net rw - nfs4 b rw\n"
        "3 1 0:3 / /usb rw shared:2 master:3 - fuseblk c rw\n4 1 0:4 / /ssh rw - fuse.sshfs d "
        "rw\n");
    EXPECT_EQ(table.localPoints(), (std::set<std::string>{"/", "/usb"}));
}

TEST(MountTableTest, FindsTheOtherNamesOfAPath) {
    const MountTable table = MountTable::parse(
        "1 0 8:1 / / x\n2 1 8:1 /home/u/.ssh/keys /home/u/keys x\n3 1 8:2 /@home /data x\n"
        "4 1 8:2 / /all x\n5 1 8:1 /srv /home/u/srv x\n6 1 8:2 /@home /home/u/srv x\n");
    using Names = std::vector<std::string>;
    const std::pair<const char*, Names> cases[] = {
        {"/home/u/keys/id",      {"/home/u/.ssh/keys/id"}         },
        {"/home/u/keys",         {"/home/u/.ssh/keys"}            },
        {"/home/u/keysx",        {}                               },
        {"/home/u/.ssh/keys/id", {"/home/u/keys/id"}              },
        {"/data/a",              {"/all/@home/a", "/home/u/srv/a"}},
        {"/home/u/srv/a",        {"/data/a", "/all/@home/a"}      },
        {"/srv/a",               {"/home/u/srv/a"}                },
    };
    for (const auto& [path, names] : cases) {
        EXPECT_EQ(table.otherNames(path), names) << path;
    }
}

TEST(MountTableTest, FindsTheFewestMountsThatShowAVolume) {
    const MountTable table = MountTable::parse(
        "1 0 8:1 /@ / x\n2 1 8:1 /@home /home x\n3 1 8:1 /@/srv /mnt x\n4 1 8:2 / /all x\n"
        "5 1 8:2 /part /covered x\n6 1 8:3 / /covered x\n7 1 8:1 /@home2 /home2 x\n");
    const std::pair<std::uint64_t, std::vector<std::string>> cases[] = {
        {1, {"", "/home", "/home2"}},
        {3, {"", "/home", "/home2"}},
        {5, {"/all"}               },
        {6, {}                     },
        {9, {}                     },
    };
    for (const auto& [id, points] : cases) {
        std::vector<std::string> found;
        for (const MountTable::Mount& mount :
             table.wholeOf(id, [](const MountTable::Mount& shown) { return shown.id != 6; })) {
            found.push_back(mount.point);
        }
        EXPECT_EQ(found, points) << id;
    }
}

}  // namespace
}  // namespace Brimlo::Platform
