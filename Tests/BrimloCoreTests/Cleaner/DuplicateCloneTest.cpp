#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/TempHome.h"

#include <cstdlib>
#include <filesystem>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

bool shell(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

using DuplicateCloneTest = Testing::TempHome;

TEST_F(DuplicateCloneTest, PutsACloneInThePlaceOfTheDuplicate) {
    const std::string content(1'000'000, 'c');
    const std::string elsewhere = write("elsewhere", content);
    fs::resize_file(write("image", ""), std::uintmax_t{128} << 20U);
    Testing::withOwnMounts([&] {
        makeFolder("v");
        if (!shell("cd && (mkfs.btrfs -q image && mount -o loop image v) > /dev/null 2>&1")) {
            GTEST_SKIP() << "this takes mkfs.btrfs (btrfs-progs) and the right to mount an image";
        }
        const std::string original = write("v/original", content);
        const std::string duplicate = write("v/duplicate", content);
        // With these bits the clone would lend the rights of the original's owner.
        ASSERT_TRUE(shell("cd ~/v && chown nobody duplicate && chmod 6777 duplicate"));
        age(duplicate, 30);
        const auto modified = fs::last_write_time(duplicate);
        EXPECT_TRUE(DuplicateFinder::replaceWithClone(original, duplicate));
        EXPECT_EQ(fs::last_write_time(duplicate), modified);
        EXPECT_EQ(fs::status(duplicate).permissions(), fs::perms::all);
        write("v/original", "changed");
        EXPECT_EQ(Testing::contentOf(duplicate), content);
        const auto fails = [&](const std::string& from, const std::string& to, const Error& error) {
            EXPECT_EQ(DuplicateFinder::replaceWithClone(from, to).error(), error);
            EXPECT_EQ(Testing::contentOf(duplicate), content);
            EXPECT_FALSE(Testing::exists(to + ".brimlo-clone"));
        };
        const std::string failed = "clonefile failed: ";
        fails(elsewhere, duplicate, {"POSIX", EXDEV, failed + "Invalid cross-device link"});
        fails(original, makeFolder("v/folder"), {"POSIX", EISDIR, "rename failed"});
    });
}

}  // namespace
}  // namespace Brimlo
