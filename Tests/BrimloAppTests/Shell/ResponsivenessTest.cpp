#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QSemaphore>
#include <QtCore/QTimer>
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

namespace Brimlo {
namespace {

/// The longest time that the main thread spent between two returns to its event loop.
///
/// Measured on the thread's own processor clock: what the machine does meanwhile, and who else
/// wants the processor, doesn't count.
class LoopWatch {
public:
    LoopWatch() {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            const double now = threadMilliseconds();
            longest_ = std::max(longest_, now - last_);
            last_ = now;
        });
        last_ = threadMilliseconds();
        timer_.start(0);
    }

    [[nodiscard]] double longest() const { return longest_; }

    static double threadMilliseconds() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

private:
    QTimer timer_;
    double last_ = 0;
    double longest_ = 0;
};

/// Nothing that the user starts keeps the main thread for longer than a frame can bear.
class ResponsivenessTest : public Testing::ModelTest {
protected:
    template <typename Operation>
    double longestBlock(Operation operation) {
        finish();
        const LoopWatch watch;
        settle();
        operation();
        finish();
        return watch.longest();
    }

    /// Keeps the thread busy for longer than is allowed.
    static void burn() {
        const double start = LoopWatch::threadMilliseconds();
        while (LoopWatch::threadMilliseconds() - start < 60) {
        }
    }

    static constexpr double kMostMilliseconds = 8;
};

TEST_F(ResponsivenessTest, StaysWithinAFrameDuringEveryLongOperation) {
    for (int folder = 0; folder < 100; ++folder) {
        const std::string name = "tree/" + std::to_string(folder) + "/";
        for (int file = 0; file < 1000; ++file) {
            write(name + std::to_string(file), "");
        }
    }
    std::vector<CleanItem> items;
    items.reserve(500);
    for (int i = 0; i < 500; ++i) {
        items.push_back(
            {.path = write("caches/" + std::to_string(i)), .size = 1, .ruleID = {}, .risk = {}});
    }
    EXPECT_GT(longestBlock(burn), kMostMilliseconds) << "the watch sees nothing";
    EXPECT_LE(longestBlock([&] { model().smartClean()->loadSuggestions(); }), kMostMilliseconds);
    EXPECT_LE(longestBlock([&] { model().analyzer()->startScan(at("tree")); }), kMostMilliseconds);
    EXPECT_EQ(model().analyzer()->scanFiles(), 100'000);
    EXPECT_LE(longestBlock([&] { model().analyzer()->startScan(at("caches")); }), kMostMilliseconds)
        << "the earlier tree is let go";
    const CleanPlan plan{items};
    EXPECT_LE(longestBlock([&] { model().cleanup()->run(plan); }), kMostMilliseconds);
    EXPECT_EQ(model().cleanup()->lastReport()->processed, 500);
    EXPECT_LE(longestBlock([&] { model().history()->undoLastClean(); }), kMostMilliseconds);
}

/// What the watch can't see: a wait costs no processor time.
TEST_F(ResponsivenessTest, NeverWaitsForAnotherProcessThatHoldsTheJournal) {
    const std::string file = write("data");
    makeFolder("Library/Application Support/Brimlo");
    const Platform::Descriptor lock{
        open((StoragePaths::journal() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)};
    ASSERT_EQ(flock(lock.number(), LOCK_EX), 0);
    // A main thread that waits would do so for ever.
    std::atomic<bool> hadToHelp = false;
    QSemaphore done;
    std::thread helper{[&] {
        if (!done.tryAcquire(1, 20'000)) {
            hadToHelp = true;
            flock(lock.number(), LOCK_UN);
        }
    }};
    model().smartClean()->loadSuggestions();
    model().cleanup()->run(CleanPlan{{{.path = file}}});
    model().history()->undoAll({Uuid::random()});
    model().machine()->refresh();
    settle();
    EXPECT_FALSE(model().history()->isJournalRead());
    EXPECT_FALSE(hadToHelp);
    done.release();
    helper.join();
    flock(lock.number(), LOCK_UN);
    finish();
    EXPECT_EQ(model().history()->journal().size(), 1U);
}

}  // namespace
}  // namespace Brimlo
