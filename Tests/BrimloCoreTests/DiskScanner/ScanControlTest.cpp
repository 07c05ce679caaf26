#include "BrimloCore/DiskScanner/ScanControl.h"

#include <gtest/gtest.h>

#include <thread>

namespace Brimlo {
namespace {

using Progress = ScanControl::Progress;

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
