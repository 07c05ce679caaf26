#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace Brimlo {
namespace {

using Kind = AccountLine::Kind;

class VolumeAccountTest : public Testing::TempHome {
protected:
    /// A small volume with its own home, Trash, other names, and another volume in it.
    void fillVolume(const std::string& top) const {
        setenv("HOME", (top + "/home/u").c_str(), 1);
        fill("v/home/u/.local/share/Trash/files/t", 4096);
        fill("v/home/u/.local/b", 2 * 4096);
        fill("v/home/u/c", 3 * 4096);
        fill("v/opt/d", 4 * 4096);
        fill("v/var/e", 5 * 4096);
        std::filesystem::create_hard_link(top + "/var/e", top + "/var/e2");
        fill("v/srv/f", 6 * 4096);
        std::filesystem::create_hard_link(top + "/srv/f", top + "/opt/f");
        ASSERT_EQ(mount("none", makeFolder("v/other").c_str(), "tmpfs", 0, nullptr), 0);
        fill("v/other/none", 50 * 4096);
    }
};

TEST_F(VolumeAccountTest, NamesEachByteOnce) {
    const std::string top = makeFolder("v");
    Testing::withOwnMounts([&] {
        if (mount("none", top.c_str(), "tmpfs", 0, "size=1m,nr_inodes=40") != 0) {
            GTEST_SKIP() << "the right to mount is missing";
        }
        fillVolume(top);
        std::ofstream deleted{top + "/g"};
        deleted << std::string(7 * 4096, 'x') << std::flush;
        unlink((top + "/g").c_str());
        std::ifstream name{"/proc/self/comm"};
        std::string process;
        std::getline(name, process);
        process += " (" + std::to_string(getpid()) + ")";
        while (std::ofstream{top + "/n" + std::to_string(Platform::volumeUse(top)->freeFiles)}) {
        }

        ScanControl control;
        const auto account = VolumeAccount::of(top + "/srv", control);
        ASSERT_TRUE(account);
        const std::int64_t page = 4096;
        const std::vector<AccountLine> lines{
            {Kind::deletedOpen,  "Deleted but open in " + process,      7 * page, 1},
            {Kind::severalAreas, "Files with names in several folders", 6 * page, 0},
            {Kind::area,         top + "/var",                          5 * page, 1},
            {Kind::area,         top + "/opt",                          4 * page, 1},
            {Kind::area,         top + "/home/u",                       3 * page, 1},
            {Kind::area,         top + "/home/u/.local",                2 * page, 1},
            {Kind::trash,        "Trash",                               page,     1},
            {Kind::rest,         "Not explained",                       0,        0},
        };
        auto found = account->lines;
        // Which of the two names of a file was met first is chance.
        found[3].files = 1;
        EXPECT_EQ(found, lines);
        EXPECT_EQ(account->taken(), 28 * page);
        EXPECT_EQ(account->mountPoints, std::vector{top + "/other"});
        EXPECT_TRUE(account->isWhole);
        EXPECT_THAT(account->remarks().front(), testing::StartsWith("No more files can be made"));

        control.cancel();
        EXPECT_FALSE(VolumeAccount::of(top, control));
    });
}

}  // namespace
}  // namespace Brimlo
