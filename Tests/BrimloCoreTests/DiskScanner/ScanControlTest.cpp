#include "BrimloCore/DiskScanner/ScanControl.h"

#include <gtest/gtest.h>

#include <thread>

namespace Brimlo {
namespace {

using Progress = ScanControl::Progress;

TEST(ScanControlTest, AddsUpAndKeepsTheLatestPath) {
    ScanControl control;
    EXPECT_EQ(control.progress(), Progress{});
    EXPECT_FALSE(control.isCancelled());
    control.record(3, 4'000'000'000, "/a");
    control.record(2, 5, "/b");
    EXPECT_EQ(control.progress(), (Progress{5, 4'000'000'005, "/b"}));
    control.record(0, 0, "/c");
    EXPECT_EQ(control.progress(), (Progress{5, 4'000'000'005, "/c"}));
    control.skip("/z");
    control.skip("/a");
    control.skip("/z");
    EXPECT_EQ(control.inaccessible(), (std::vector<std::string>{"/z", "/a", "/z"}));
    control.cancel();
    control.cancel();
    control.record(1, 1, "");
    EXPECT_TRUE(control.isCancelled());
    EXPECT_EQ(control.progress(), (Progress{6, 4'000'000'006, ""}));
}

TEST(ScanControlTest, ShowsOneConsistentReading) {
    constexpr int kThreads = 4;
    constexpr std::int64_t kRecords = 2'000;
    ScanControl control;
    std::vector<std::thread> walks;
    for (int i = 0; i < kThreads; ++i) {
        walks.emplace_back([&] {
            for (std::int64_t n = 0; n < kRecords; ++n) {
                control.record(1, 512, "/folder");
                if (n % 100 == 0) {
                    control.skip("/closed");
                }
            }
        });
    }
    while (control.progress().files < kThreads * kRecords) {
        const Progress progress = control.progress();
        EXPECT_EQ(progress.bytes, progress.files * 512);
        EXPECT_EQ(progress.path, progress.files == 0 ? "" : "/folder");
    }
    control.cancel();
    for (std::thread& walk : walks) {
        EXPECT_TRUE(control.isCancelled());
        walk.join();
    }
    EXPECT_EQ(
        control.progress(), (Progress{kThreads * kRecords, kThreads * kRecords * 512, "/folder"}));
    EXPECT_EQ(control.inaccessible().size(), kThreads * kRecords / 100);
}

}  // namespace
}  // namespace Brimlo
