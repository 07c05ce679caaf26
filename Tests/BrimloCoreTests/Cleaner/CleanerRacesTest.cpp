#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "Support/Proof.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <map>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::exists;

class CleanerRacesTest : public Testing::CleaningHome {
protected:
    static constexpr std::chrono::seconds kDuration{3};

    /// Calls `disturb` on another thread, as fast as it can, while `work` is called: for a while,
    /// or as often as BRIMLO_RACES says. Returns how often it was called.
    static std::int64_t race(
        const std::function<void()>& disturb, const std::function<void()>& work) {
        std::atomic<bool> isDone{false};
        std::thread other{[&] {
            while (!isDone) {
                disturb();
            }
        }};
        const auto end = std::chrono::steady_clock::now() + kDuration;
        const std::int64_t wanted = Testing::rounds("BRIMLO_RACES", 0);
        std::int64_t count = 0;
        while (wanted > 0 ? count < wanted : std::chrono::steady_clock::now() < end) {
            work();
            ++count;
        }
        isDone = true;
        other.join();
        return count;
    }

    static void exchange(const std::string& one, const std::string& other) {
        renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
    }

    /// Starts a new journal from time to time, since each entry makes the next one slower.
    void keepJournalShort() {
        constexpr std::size_t kLongest = 50;
        if (entries().size() >= kLongest) {
            fs::remove(StoragePaths::journal());
        }
    }
};

TEST_F(CleanerRacesTest, AParentThatTurnsIntoALinkLeadsNowhere) {
    const std::string parent = makeFolder("work/parent");
    const std::string decoy = link("work/decoy", makeFolder(".ssh"));
    const int folder = open(parent.c_str(), O_PATH | O_DIRECTORY);
    constexpr int kNames = 20;
    for (int i = 0; i < kNames; ++i) {
        write(".ssh/" + std::to_string(i), "secret");
    }
    int round = 0;
    int moved = 0;
    int stopped = 0;
    int wrong = 0;
    const std::int64_t races = race(
        [&] { exchange(parent, decoy); },
        [&] {
            const std::string name = std::to_string(round++ % kNames);
            close(openat(folder, name.c_str(), O_WRONLY | O_CREAT, 0600));
            const CleanReport report = clean({parent + "/" + name});
            moved += static_cast<int>(report.processed);
            stopped += static_cast<int>(report.failures.size() + report.refused.size());
            if (report.processed > 0) {
                const JournalEntry gone = entry(report.journalIDs.front());
                wrong += contentOf(gone.trashPath.value_or("")).empty() ? 0 : 1;
                fs::remove(gone.trashPath.value_or(""));
                fs::remove(noteOf(fs::path{gone.trashPath.value_or("")}.filename()));
            }
            keepJournalShort();
        });
    close(folder);
    for (int i = 0; i < kNames; ++i) {
        EXPECT_EQ(contentOf(at(".ssh/" + std::to_string(i))), "secret");
    }
    EXPECT_EQ(wrong, 0) << "a secret went to the Trash";
    Testing::told("races with a swapped parent", races, wrong);
    EXPECT_GT(moved, 0);
    EXPECT_GT(stopped, 0);
}

TEST_F(CleanerRacesTest, AnItemThatTurnsIntoAnotherStaysOrIsRecordedAsWhatItIs) {
    const std::string path = at("work/item");
    const std::string other = at("work/other");
    // The other is a second name of a file that the gate refuses under every name.
    const std::string kept = write(".claude/CLAUDE.md", "kept");
    makeFolder("work");
    fs::create_hard_link(kept, other);
    int made = 0;
    int moved = 0;
    int refused = 0;
    int wrong = 0;
    const auto make = [&](const std::string& target) {
        const int file = open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        made += file >= 0 ? 1 : 0;
        close(file);
    };
    const std::int64_t races = race(
        [&] { exchange(path, other); },
        [&] {
            make(path);
            make(other);
            const CleanReport report = clean({path});
            refused += static_cast<int>(report.refused.size());
            for (const Uuid& id : report.journalIDs) {
                const std::string trashed = entry(id).trashPath.value_or("");
                const bool isRight = entry(id).trashID == Cleaner::identity(trashed) &&
                                     Cleaner::identity(trashed) != Cleaner::identity(kept);
                wrong += isRight ? 0 : 1;
                ++moved;
                fs::rename(trashed, isRight ? at("gone") : other);
                fs::remove(noteOf(fs::path{trashed}.filename()));
            }
            keepJournalShort();
        });
    EXPECT_EQ(wrong, 0);
    const auto count = [&](const std::string& folder) {
        return std::distance(fs::directory_iterator{folder}, fs::directory_iterator{});
    };
    EXPECT_EQ(count(at("work")) + moved, made + 1);
    EXPECT_EQ(count(at(".local/share/Trash/files")), 0);
    EXPECT_EQ(count(at(".local/share/Trash/info")), 0);
    EXPECT_EQ(statusOf(kept).st_nlink, 2U);
    EXPECT_GT(moved, 0);
    EXPECT_GT(refused, 0);
    Testing::told("races with a swapped item", races, wrong);
}

TEST_F(CleanerRacesTest, PurgeDeletesNoItemThatTookAnothersPlace) {
    const std::string foreign = write("foreign", "foreign");
    const std::string place = inTrash("item");
    const std::string fresh = at("fresh");
    makeFolder(".local/share/Trash/files");
    std::optional<std::string> ownID;
    std::int64_t purged = 0;
    const std::int64_t races = race(
        [&] { exchange(foreign, place); },
        [&] {
            write("fresh", "own");
            const auto freshID = Cleaner::identity(fresh);
            if (renameat2(AT_FDCWD, fresh.c_str(), AT_FDCWD, place.c_str(), RENAME_NOREPLACE) ==
                0) {
                ownID = freshID;
            }
            JournalEntry entry = JournalEntry::make(
                {.originalPath = at("item"), .trashPath = place, .size = 1, .trashID = ownID});
            entry.date -= std::chrono::days{2};
            write(
                ".local/share/Trash/info/" + fs::path{place}.filename().string() + ".trashinfo",
                "[Trash Info]\nPath=/x\nX-Brimlo-Entry=" + entry.id.text() + "\n");
            EXPECT_TRUE(journal_->append(entry));
            purged += cleaner_.purgeOwnTrash(1, false).bytes;
            keepJournalShort();
        });
    EXPECT_GT(purged, 0);
    // It is in one of the two places, or where it was put aside and could not be put back from.
    int found = contentOf(foreign) == "foreign" ? 1 : 0;
    for (const auto& file : fs::recursive_directory_iterator{at(".local/share/Trash")}) {
        found += file.is_regular_file() && contentOf(file.path().string()) == "foreign" ? 1 : 0;
    }
    EXPECT_EQ(found, 1);
    Testing::told("races of a purge with a swapped item", races, found == 1 ? 0 : 1);
}

TEST_F(CleanerRacesTest, CleanersAtOnceLoseNothingAndDoubleNothing) {
    constexpr int kCleaners = 4;
    constexpr int kItems = 60;
    std::vector<std::string> paths;
    for (int i = 0; i < kItems; ++i) {
        paths.push_back(write("work/" + std::to_string(i) + "/same name", std::to_string(i)));
    }
    std::vector<CleanReport> reports(kCleaners);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        threads.emplace_back([&, i] {
            // Two share an object, two have their own, as two processes would.
            Cleaner own{std::make_shared<Journal>(StoragePaths::journal())};
            std::vector<std::string> mine = paths;
            std::ranges::rotate(mine, mine.begin() + static_cast<std::ptrdiff_t>(i) * 7);
            reports[i] =
                (i < 2 ? cleaner_ : own).execute(planFor(mine), DisposalMode::trash, false);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::int64_t processed = 0;
    for (const CleanReport& report : reports) {
        processed += report.processed;
        for (const ItemProblem& failure : report.failures) {
            EXPECT_EQ(failure.reason, "no longer exists");
        }
    }
    EXPECT_EQ(processed, kItems);
    std::map<std::string, std::string> trashPaths;
    for (const JournalEntry& entry : entries()) {
        EXPECT_TRUE(trashPaths.emplace(entry.originalPath, entry.trashPath.value_or("")).second);
    }
    ASSERT_EQ(trashPaths.size(), paths.size());
    for (int i = 0; i < kItems; ++i) {
        const auto number = static_cast<std::size_t>(i);
        EXPECT_EQ(contentOf(trashPaths[paths[number]]), std::to_string(i));
        EXPECT_FALSE(exists(paths[number]));
    }
}

}  // namespace
}  // namespace Brimlo
