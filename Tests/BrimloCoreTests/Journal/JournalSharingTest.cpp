#include "BrimloCore/Journal/Journal.h"
#include "BrimloCoreTests/Cleaner/Child.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <numeric>
#include <thread>

namespace Brimlo {
namespace {

constexpr int kWriters = 4;
constexpr int kAppends = 100;

class JournalSharingTest : public Testing::TempHome {
protected:
    /// Adds entries in both ways, and marks some, as a clean and an undo do.
    static void work(Journal& journal, int writer) {
        for (int i = 0; i < kAppends; ++i) {
            const JournalEntry entry =
                JournalEntry::make({.originalPath = std::to_string(writer), .size = i});
            if (i % 3 == 0) {
                auto group = journal.begin();
                EXPECT_TRUE(group->announce(JournalLog::Kind::leaves, {entry}));
                EXPECT_TRUE(group->record(JournalLog::Kind::added, {entry}));
            } else {
                EXPECT_TRUE(journal.append(entry));
            }
            if (i % 10 == 0) {
                EXPECT_TRUE(journal.merge());
            }
            if (i % 50 == 0) {
                EXPECT_TRUE(
                    journal.update({entry.id}, [](JournalEntry& found) { found.undone = true; }));
            }
        }
    }

    /// Nothing is lost and nothing doubled, and each writer's entries stand in the order of its
    /// calls.
    void expectAll() {
        std::vector<JournalEntry> entries = journal_.entries().value();
        std::ranges::reverse(entries);
        std::map<std::string, std::vector<std::int64_t>> calls;
        for (const JournalEntry& entry : entries) {
            calls[entry.originalPath].push_back(entry.size);
            EXPECT_EQ(entry.undone, entry.size % 50 == 0);
        }
        std::vector<std::int64_t> expected(kAppends);
        std::iota(expected.begin(), expected.end(), 0);
        for (int writer = 0; writer < kWriters; ++writer) {
            EXPECT_EQ(calls[std::to_string(writer)], expected);
        }
        EXPECT_FALSE(Testing::exists(at("journal.json.corrupt")));
    }

    Journal journal_{at("journal.json")};
};

TEST_F(JournalSharingTest, ProcessesLoseNothing) {
    Testing::inProcesses(kWriters, [this](int writer) { work(journal_, writer); });
    expectAll();
}

TEST_F(JournalSharingTest, ThreadsLoseNothing) {
    std::vector<std::thread> threads;
    for (int writer = 0; writer < kWriters; ++writer) {
        threads.emplace_back([this, writer] {
            // Two share an object, two have their own.
            Journal own{at("journal.json")};
            work(writer % 2 == 0 ? journal_ : own, writer);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    expectAll();
}

}  // namespace
}  // namespace Brimlo
