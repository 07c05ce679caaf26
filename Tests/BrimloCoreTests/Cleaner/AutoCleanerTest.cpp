#include "BrimloCore/Cleaner/AutoCleaner.h"

#include "BrimloCore/UserRules/UserRules.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "BrimloCoreTests/Support/SampleRule.h"

#include <gmock/gmock.h>

#include <chrono>

namespace Brimlo {
namespace {

using AutoCleaner::run;
using Testing::exists;
using Texts = std::vector<std::string>;
constexpr std::int64_t kGB = 1'000'000'000;

class AutoCleanerTest : public Testing::CleaningHome {
protected:
    /// An item that went to the Trash so many days ago.
    void trashLongAgo(const std::string& name, int days) {
        change(trash(write(name)).id, [&](JournalEntry& changed) {
            changed.date -= std::chrono::hours{24 * days};
        });
    }

    [[nodiscard]] Texts planned(const AutoCleanOutcome& outcome) const {
        Texts lines;
        for (const CleanItem& item : outcome.planned) {
            lines.push_back(*item.ruleID + " " + item.path.substr(home().size() + 1));
        }
        return lines;
    }
};

TEST_F(AutoCleanerTest, WaitsWhileThereIsRoom) {
    const auto free = [](std::int64_t bytes) {
        return VolumeInfo::Snapshot{900 * kGB, bytes, 800 * kGB};
    };
    const struct {
        std::int64_t threshold;
        std::optional<VolumeInfo::Snapshot> volume;
        std::optional<std::string> reason;
    } cases[] = {
        {30,            free(30 * kGB),               std::nullopt                                               },
        {30,            free(30 * kGB + 1),           "Free space 30 GB is above the 30 GB threshold."           },
        {30,            free(31 * kGB + 250'000'000), "Free space 31.25 GB is above the 30 GB threshold."        },
        {30,            std::nullopt,                 "Auto-clean did not run: the free space could not be read."},
        {-1,            free(0),                      "Free space 0 bytes is above the -1 GB threshold."         },
        {9'223'372'036, free(800 * kGB),              std::nullopt                                               },
        {9'223'372'037, free(800 * kGB),              std::nullopt                                               },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(
            AutoCleaner::reasonToWait({.freeSpaceThresholdGB = c.threshold}, c.volume), c.reason);
    }
}

TEST_F(AutoCleanerTest, TakesWhatNeedsNoReview) {
    const struct {
        std::string id;
        Risk risk;
        Texts runningApps;
        bool isUsersOwn;
        bool customRules;
        bool isTaken;
    } cases[] = {
        {"npm.cache",  Risk::safe,    {},      false, false, true },
        {"artifact.x", Risk::rebuild, {},      false, false, true },
        {"npm.cache",  Risk::review,  {},      false, false, false},
        {"npm.cache",  Risk::safe,    {"App"}, false, false, false},
        {"custom.a",   Risk::safe,    {},      false, false, true },
        {"custom.a",   Risk::safe,    {},      true,  false, false},
        {"npm.cache",  Risk::safe,    {},      true,  false, false},
        {"npm.cache",  Risk::safe,    {},      true,  true,  true },
        {"custom.a",   Risk::review,  {},      true,  true,  false},
    };
    for (const auto& c : cases) {
        Suggestion suggestion{
            .id = c.id,
            .name = "N",
            .risk = c.risk,
            .isUsersOwn = c.isUsersOwn,
            .runningApps = c.runningApps};
        for (const char* path : {"/z", "/y", "/a"}) {
            suggestion.items.push_back({.path = path, .size = 3});
        }
        const Suggestion unticked = suggestion;
        suggestion.preselectedPaths = {"/a", "/z", "/elsewhere"};
        const std::vector<CleanItem> all = {
            {"/z", 3, c.id, c.risk, "N"},
            {"/a", 3, c.id, c.risk, "N"}
        };
        const AppConfig config{.autoCleanIncludesCustomRules = c.customRules};
        const CleanPlan taken = AutoCleaner::selection(config, {unticked, suggestion});
        EXPECT_EQ(taken.items(), c.isTaken ? all : std::vector<CleanItem>{})
            << c.id << rawValue(c.risk);
    }
}

TEST_F(AutoCleanerTest, PurgesWheneverItMayRun) {
    trashLongAgo("old", 8);
    trashLongAgo("recent", 6);
    const auto before = Testing::describeTree(at(".local"));
    const std::string off =
        "Auto-clean is off. Turn it on in Settings (or `config auto-clean-enabled true`), or pass "
        "--force for a one-off run.";
    EXPECT_EQ(run({}, cleaner_, false, false), (AutoCleanOutcome{.skippedReason = off}));
    const AppConfig neverShort{.autoCleanEnabled = true, .freeSpaceThresholdGB = -1};
    EXPECT_EQ(run(neverShort, cleaner_, true, false).purge.bytes, kItemSize);
    EXPECT_EQ(Testing::describeTree(at(".local")), before);
    const AutoCleanOutcome outcome = run(neverShort, cleaner_, false, false);
    const auto reason = outcome.skippedReason;
    EXPECT_TRUE(reason && reason->ends_with(" is above the -1 GB threshold."));
    EXPECT_EQ(
        outcome,
        (AutoCleanOutcome{
            .skippedReason = reason, .purge = {.bytes = kItemSize, .removed = 1}
    }));
    EXPECT_TRUE(!exists(inTrash("old")) && exists(inTrash("recent")));

    // But not while nobody knows what is to be left alone.
    const std::string list = StoragePaths::support() + "/left-alone.json";
    write(list.substr(home().size() + 1), "{");
    EXPECT_TRUE(run({}, cleaner_, false, true).isBlocked && exists(inTrash("recent")));
    std::filesystem::remove(list);

    // And not where nobody would see that the journal lacks what went.
    write(".cache/thumbnails/normal/1.png");
    std::filesystem::remove(StoragePaths::journal());
    ASSERT_EQ(mkfifo(StoragePaths::journal().c_str(), 0600), 0);
    AutoCleanOutcome blocked{
        .skippedReason =
            "Auto-clean did not run: the journal can't be written (Invalid argument)."};
    blocked.isBlocked = true;
    EXPECT_EQ(run({}, cleaner_, false, true), blocked);
    EXPECT_TRUE(exists(at(".cache/thumbnails/normal/1.png")) && exists(inTrash("recent")));
}

TEST_F(AutoCleanerTest, CleansWhatComesBackByItself) {
    write(".cache/thumbnails/normal/1.png");
    write("code/old/node_modules/lib.js");
    write("code/fresh/node_modules/lib.js");
    age(write("code/old/package.json"), 90.5);
    age(write("code/fresh/package.json"), 89.5);
    write("mine");
    CleanupRule mine = Testing::sampleRule("custom.mine");
    mine.paths = {"~/mine"};
    ASSERT_TRUE(UserRules::save(mine, UserRules::defaultDirectory()));

    const AutoCleanOutcome dry = run({}, cleaner_, true, true);
    EXPECT_THAT(
        planned(dry),
        testing::UnorderedElementsAre(
            "photos.thumbnails .cache/thumbnails/normal",
            "artifact.node_modules code/old/node_modules"));
    EXPECT_EQ(dry.report, (CleanReport{.processed = 2}));

    // Were the purge the last that is done, it would delete what has just gone.
    AppConfig alwaysShort{.autoCleanEnabled = true, .freeSpaceThresholdGB = 9'223'372'036};
    alwaysShort.trashRetentionDays = 0;
    trashLongAgo("earlier", 1);
    const AutoCleanOutcome done = run(alwaysShort, cleaner_, false, false);
    EXPECT_EQ(done.planned, dry.planned);
    EXPECT_EQ(done.purge.bytes, kItemSize);
    EXPECT_EQ(done.report->processed, 2);
    EXPECT_TRUE(exists(inTrash("normal/1.png")) && exists(inTrash("node_modules/lib.js")));

    alwaysShort.autoCleanIncludesCustomRules = true;
    EXPECT_EQ(planned(run(alwaysShort, cleaner_, false, false)), Texts{"custom.mine mine"});
}

}  // namespace
}  // namespace Brimlo
