#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

#include <functional>

namespace Brimlo {
namespace {

using AppModelDeletionTest = Testing::ModelTest;

TEST_F(AppModelDeletionTest, DropsTheResultsOfWhateverWasRunning) {
    const auto plan = [this] {
        std::vector<CleanItem> items;
        items.reserve(50);
        for (int i = 0; i < 50; ++i) {
            items.push_back({.path = write("files/" + std::to_string(i)), .size = 1});
        }
        return CleanPlan{items};
    };
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
        {"clean",       [&](AppModel& it) { it.cleanup()->run(plan()); }              },
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
