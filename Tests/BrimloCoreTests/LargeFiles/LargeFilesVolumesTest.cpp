#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "Support/TempHome.h"

namespace Brimlo {
namespace {

using Lines = std::vector<std::string>;
using LargeFilesVolumesTest = Testing::TempHome;

TEST_F(LargeFilesVolumesTest, BothWalksStayOnTheVolumeOfTheFolderThatWasOpened) {
    const std::string volume = makeFolder("a/volume");
    const std::string way = link("way", volume);
    Testing::withOwnMounts([&] {
        if (mount("none", volume.c_str(), "tmpfs", 0, nullptr) != 0) {
            GTEST_SKIP() << "the right to mount is missing";
        }
        fill("a/volume/file", 50'000);
        ScanControl control;
        const auto found = LargeFiles::find(way + "/", 9, {.minSize = 1}, control);
        ASSERT_TRUE(found && found->size() == 1U);
        EXPECT_EQ(found->front()->path(), way + "/file");
        EXPECT_EQ(control.otherVolumes(), Lines{});
        EXPECT_TRUE(LargeFiles::find(at("a"), 9, {.minSize = 1}, control)->empty());
        EXPECT_EQ(control.otherVolumes(), Lines{volume});

        const auto scan = std::make_shared<ScanControl>();
        EXPECT_GE(DiskScanner(scan, {}).scan(way)->size, 50'000);
        static_cast<void>(DiskScanner(scan, {}).scan(at("a")));
        const UnreadableArea area{
            .area = "Other volumes",
            .count = 1,
            .example = volume,
            .reason = "Left out: " + volume + ". Scan them on their own.",
        };
        EXPECT_EQ(UnreadableFolders::group(*scan, home()), std::vector{area});
    });
}

}  // namespace
}  // namespace Brimlo
