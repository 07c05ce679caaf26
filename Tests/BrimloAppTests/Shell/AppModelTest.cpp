#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <QtTest/QSignalSpy>
#include <gmock/gmock.h>

#include <functional>
#include <utility>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

using AppModelTest = Testing::ModelTest;

TEST_F(AppModelTest, StartsWithWhatTheHomeHoldsAndThenLooksForWhatCanGo) {
    fill("data", 100'000);
    model().cleanup()->run(CleanPlan{{{.path = at("data"), .size = 1, .ruleID = {}, .risk = {}}}});
    finish();
    restart();

    addSampleRules();
    AppModel& started = model();
    EXPECT_EQ(started.section(), Section::Overview);
    EXPECT_FALSE(started.history()->isJournalRead()) << "is read in the background";
    EXPECT_EQ(started.machine()->trashBytes(), 0) << "is measured there";
    EXPECT_GT(started.rules()->builtInRules().size(), 400U);
    EXPECT_EQ(started.analyzer()->scanRoot(), home());
    finish();
    EXPECT_GE(started.machine()->trashBytes(), 100'000);
    EXPECT_EQ(started.history()->journal().size(), 1U);
    EXPECT_TRUE(started.banner()->text().isEmpty()) << "auto-clean is off and says nothing";
    EXPECT_THAT(started.smartClean()->suggestions(), IsEmpty());
    EXPECT_EQ(started.analyzer()->root(), nullptr);

    clock.advance(1s);
    EXPECT_TRUE(started.smartClean()->isSuggesting());
    finish();
    EXPECT_EQ(suggestion("custom.caches").items.size(), 2U);
    EXPECT_EQ(started.section(), Section::Overview);
}

TEST_F(AppModelTest, ChangesFilesWhileSearchesOccupyTheirThreads) {
    model();
    finish();
    const Testing::HeldWork searches;
    model().cleanup()->run(
        CleanPlan{{{.path = write("data"), .size = 1, .ruleID = {}, .risk = {}}}});
    waitFor([this] { return !model().cleanup()->isCleaning(); });
    model().history()->undoLastClean();
    waitFor([this] { return model().busy().isEmpty(); });
    EXPECT_EQ(model().banner()->text(), "Restored 1 item(s).");
}

TEST_F(AppModelTest, MeasuresTheTrashOnceAtATimeAndOnceMoreAtTheEnd) {
    model();
    finish();
    const Testing::Arrivals arrivals;
    {
        const Testing::HeldWork held;
        for (int i = 0; i < 5; ++i) {
            model().machine()->refresh();
        }
        fill(".local/share/Trash/files/data", 100'000);
    }
    finish();
    EXPECT_EQ(arrivals.count(), 2);
    EXPECT_GE(model().machine()->trashBytes(), 100'000);

    fill(".local/share/Trash/files/more", 100'000);
    model().machine()->refresh();
    Background::waitForDone();
    fill(".local/share/Trash/files/most", 100'000);
    model().machine()->refresh();
    const QSignalSpy sizes{model().machine(), &Machine::trashChanged};
    finish();
    EXPECT_EQ(sizes.count(), 1) << "none too old";
}

TEST_F(AppModelTest, GoesOnWhereNothingCanBeKept) {
    // Where the support folder should be, there is a file.
    write("Library/Application Support/Brimlo", "in the way");
    const std::string file = write("data");
    AppModel& unable = model();
    EXPECT_EQ(unable.banner()->text(), "The settings could not be read: Not a directory.");
    unable.banner()->show("");
    unable.settings()->setStaleDays(14);
    EXPECT_EQ(unable.settings()->staleDays(), 90) << "shows what the file holds";
    EXPECT_EQ(unable.banner()->text(), "The settings could not be read: Not a directory.");
    unable.rules()->newRuleDraft(at("cache"));
    unable.rules()->ruleDraft()->useSuggestedWording();
    unable.rules()->saveRuleDraft();
    ASSERT_NE(unable.rules()->ruleDraft(), nullptr) << "what was typed is not lost";
    EXPECT_EQ(unable.rules()->ruleDraft()->property("saveFailure"), unable.banner()->text());
    EXPECT_TRUE(unable.banner()->text().startsWith("Could not save rule: "));
    unable.rules()->setRuleDisabled("general.app-caches", true);
    EXPECT_THAT(unable.rules()->disabledRuleIDs(), IsEmpty()) << "shows what the file holds";
    EXPECT_EQ(unable.banner()->text(), "The change could not be saved: Not a directory.");
    unable.smartClean()->loadSuggestions();
    unable.analyzer()->scan();
    unable.largeFiles()->find();
    unable.duplicates()->find();
    unable.cleanup()->run(CleanPlan{{{.path = file, .size = 1, .ruleID = {}, .risk = {}}}});
    finish();
    EXPECT_EQ(
        unable.cleanup()->lastReport()->processed +
            std::ssize(unable.cleanup()->lastReport()->failures),
        1);
    EXPECT_EQ(Testing::exists(file), unable.cleanup()->lastReport()->processed == 0);
}

TEST_F(AppModelTest, DropsTheResultsOfWhateverWasRunning) {
    write("cleaned");
    model().cleanup()->run(CleanPlan{{{.path = at("cleaned")}}});
    finish();
    const Uuid cleaned = model().history()->journal().front().id;
    const std::pair<const char*, std::function<void(AppModel&)>> cases[] = {
        {"suggestions", [](AppModel& it) { it.smartClean()->loadSuggestions(); }      },
        {"scan",        [](AppModel& it) { it.analyzer()->startScan("/usr/share"); }  },
        {"large files",
         [](AppModel& it) {
             it.largeFiles()->setRoot("/usr/share");
             it.largeFiles()->find();
         }                                                                            },
        {"duplicates",  [](AppModel& it) { it.duplicates()->find(); }                 },
        {"clean",       [&](AppModel& it) { it.cleanup()->run(planFiles(50)); }       },
        {"undo",        [&](AppModel& it) { it.history()->undoAll({cleaned}); }       },
        {"purge",       [](AppModel& it) { it.history()->purgeOwnTrash(); }           },
        {"empty",       [](AppModel& it) { it.history()->emptyTrash(); }              },
        {"auto-clean",  [](AppModel& it) { it.settings()->runAutoClean(true, false); }},
        {"volume",      [](AppModel& it) { it.machine()->refresh(); }                 },
    };
    for (const auto& [name, start] : cases) {
        // Once before the work can have ended, and once between its end and its way home.
        for (const bool waits : {false, true}) {
            SCOPED_TRACE(name);
            start(model());
            if (waits) {
                Background::waitForDone();
            }
            restart();
            Background::waitForDone();
            settle();
        }
    }
    // Only the results were dropped: the work itself is done and written down.
    model();
    finish();
    EXPECT_GE(model().history()->journal().size(), 50U);
}

}  // namespace
}  // namespace Brimlo
