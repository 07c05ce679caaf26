#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <thread>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

class AppModelTest : public Testing::ModelTest {};

TEST_F(AppModelTest, StartsWithWhatTheHomeHoldsAndRunsNothingByItself) {
    write("data", std::string(100'000, 'x'));
    model().runClean(
        CleanPlan{{{.path = at("data"), .size = 1, .ruleID = {}, .risk = {}}}},
        DisposalMode::trash);
    finish();
    restart();

    AppModel& started = model();
    EXPECT_EQ(started.section(), Section::overview);
    EXPECT_FALSE(started.isJournalRead()) << "is read in the background";
    EXPECT_EQ(started.trashBytes(), 0) << "is measured there";
    EXPECT_TRUE(started.volumeFigures().isKnown);
    EXPECT_TRUE(started.hasFullDiskAccess());
    EXPECT_GT(started.builtInRules().size(), 600U);
    EXPECT_EQ(started.scanRoot(), home());
    finish();
    EXPECT_GE(started.trashBytes(), 100'000);
    EXPECT_EQ(started.journal().size(), 1U);
    EXPECT_TRUE(started.banner().isEmpty()) << "auto-clean is off and says nothing";
    EXPECT_THAT(started.suggestions(), IsEmpty());
    EXPECT_EQ(started.root(), nullptr);
}

TEST_F(AppModelTest, ChangesFilesWhileSearchesOccupyTheirThreads) {
    model();
    finish();
    const Testing::HeldWork searches;
    model().runClean(
        CleanPlan{{{.path = write("data"), .size = 1, .ruleID = {}, .risk = {}}}},
        DisposalMode::trash);
    waitFor([this] { return !model().isCleaning(); });
    model().undoLastClean();
    waitFor([this] { return model().busy().isEmpty(); });
    EXPECT_EQ(model().banner(), "Restored 1 item(s).");
}

TEST_F(AppModelTest, MeasuresTheTrashOnceAtATimeAndOnceMoreAtTheEnd) {
    model();
    finish();
    const Testing::Arrivals arrivals;
    {
        const Testing::HeldWork held;
        for (int i = 0; i < 5; ++i) {
            model().refreshVolume();
        }
        write(".local/share/Trash/files/data", std::string(100'000, 'x'));
    }
    finish();
    EXPECT_EQ(arrivals.count(), 2);
    EXPECT_GE(model().trashBytes(), 100'000);
}

TEST_F(AppModelTest, NeverReleasesOnTheMainThread) {
    const std::thread::id mainThread = std::this_thread::get_id();
    std::atomic<int> here = 0;
    for (int i = 0; i < 20'000; ++i) {
        releaseInBackground(
            std::shared_ptr<int>{new int, [&](const int* held) {
                                     here += std::this_thread::get_id() == mainThread ? 1 : 0;
                                     delete held;
                                 }});
    }
    Background::waitForDone();
    EXPECT_EQ(here, 0);
}

TEST_F(AppModelTest, TellsEachSectionByItsWord) {
    for (const Section section : kAllSections) {
        model().setSectionID(QString::fromUtf8(id(section)));
        EXPECT_EQ(model().section(), section);
    }
    changes();
    model().setSectionID("nowhere");
    model().setSectionID("settings");
    EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(AppModelTest, ShowsABannerForAsLongAsItsWordsDeserve) {
    struct Case {
        const char* text;
        std::chrono::seconds time;
    };
    const Case cases[] = {
        {"Saved.",                 8s },
        {"It FAILED somehow.",     20s},
        {"Could Not do that.",     20s},
        {"We were unable to.",     20s},
        {"Nothing could be done.", 8s },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        model().setBanner(c.text);
        clock.advance(c.time - 1ms);
        EXPECT_EQ(model().banner(), c.text);
        clock.advance(1ms);
        EXPECT_EQ(model().banner(), "");
    }
}

TEST_F(AppModelTest, LeavesABannerToItsOwnTimer) {
    const std::size_t idle = (model(), clock.waiting());
    model().setBanner("First.");
    clock.advance(7s);
    model().setBanner("Second.");
    clock.advance(7s);
    EXPECT_EQ(model().banner(), "Second.") << "the first one's timer was cancelled";
    model().setBanner("Second.");
    clock.advance(7s);
    EXPECT_EQ(model().banner(), "Second.") << "set again, it is shown for its whole time again";
    clock.advance(1s);
    EXPECT_EQ(model().banner(), "");

    model().setBanner("Third.");
    model().setBanner({});
    EXPECT_EQ(clock.waiting(), idle) << "an absent banner waits for nothing";
}

TEST_F(AppModelTest, GoesOnWhereNothingCanBeKept) {
    // Where the support folder should be, there is a file.
    write("Library/Application Support/Brimlo", "in the way");
    const std::string file = write("data");
    AppModel& unable = model();
    EXPECT_EQ(unable.banner(), "The settings could not be read: Not a directory.");
    unable.setBanner({});
    unable.setStaleDays(14);
    EXPECT_EQ(unable.staleDays(), 90) << "shows what the file holds";
    EXPECT_EQ(unable.banner(), "The settings could not be read: Not a directory.");
    unable.newRuleDraft(at("cache"));
    unable.ruleDraft()->useSuggestedWording();
    unable.saveRuleDraft();
    ASSERT_NE(unable.ruleDraft(), nullptr) << "what was typed is not lost";
    EXPECT_EQ(unable.ruleDraft()->property("saveFailure"), unable.banner());
    EXPECT_TRUE(unable.banner().startsWith("Could not save rule: "));
    unable.setRuleDisabled("general.app-caches", true);
    EXPECT_THAT(unable.disabledRuleIDs(), IsEmpty()) << "shows what the file holds";
    EXPECT_EQ(unable.banner(), "The change could not be saved: Not a directory.");
    unable.loadSuggestions();
    unable.startScan();
    unable.findLargeFiles();
    unable.findDuplicates();
    unable.runClean(
        CleanPlan{{{.path = file, .size = 1, .ruleID = {}, .risk = {}}}}, DisposalMode::trash);
    finish();
    EXPECT_EQ(unable.lastReport()->processed + std::ssize(unable.lastReport()->failures), 1);
    EXPECT_EQ(Testing::exists(file), unable.lastReport()->processed == 0);
}

TEST_F(AppModelTest, GoesOnWithoutAHome) {
    const std::string file = write("no folder");
    qputenv("HOME", file.c_str());
    AppModel& homeless = model();
    homeless.loadSuggestions();
    homeless.startScan();
    homeless.findLargeFiles();
    homeless.findDuplicates();
    homeless.purgeOwnTrash();
    finish();
    EXPECT_EQ(homeless.scanRoot(), file);
    EXPECT_THAT(homeless.dupGroups(), IsEmpty());
    EXPECT_THAT(homeless.largeFiles(), IsEmpty());
    EXPECT_EQ(homeless.trashBytes(), 0);
    EXPECT_EQ(Testing::contentOf(file), "content");
}

}  // namespace
}  // namespace Brimlo
