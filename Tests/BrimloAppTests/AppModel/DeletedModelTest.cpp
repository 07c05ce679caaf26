#include "BrimloAppTests/Support/ModelTest.h"

#include <gmock/gmock.h>

#include <functional>

namespace Brimlo {
namespace {

using DeletedModelTest = Testing::ModelTest;

TEST_F(DeletedModelTest, DropsTheResultsOfWhateverWasRunning) {
    struct Case {
        const char* name;
        std::function<void(AppModel&)> start;
    };
    const auto plan = [this] {
        std::vector<CleanItem> items;
        items.reserve(50);
        for (int i = 0; i < 50; ++i) {
            items.push_back(
                {.path = write("files/" + std::to_string(i)), .size = 1, .ruleID = {}, .risk = {}});
        }
        return CleanPlan{items};
    };
    write("cleaned");
    model().runClean(CleanPlan{{{.path = at("cleaned")}}}, DisposalMode::trash);
    finish();
    const Uuid cleaned = model().journal().front().id;
    const Case cases[] = {
        {"suggestions", [](AppModel& it) { it.loadSuggestions(); }                     },
        {"scan",        [](AppModel& it) { it.startScan("/usr/share"); }               },
        {"large files",
         [](AppModel& it) {
             it.setLargeRoot("/usr/share");
             it.findLargeFiles();
         }                                                                             },
        {"duplicates",  [](AppModel& it) { it.findDuplicates(); }                      },
        {"clean",       [&](AppModel& it) { it.runClean(plan(), DisposalMode::trash); }},
        {"undo",        [&](AppModel& it) { it.undoAll({cleaned}); }                   },
        {"purge",       [](AppModel& it) { it.purgeOwnTrash(); }                       },
        {"empty",       [](AppModel& it) { it.emptyTrash(); }                          },
        {"auto-clean",  [](AppModel& it) { it.runAutoClean(true, false); }             },
        {"volume",      [](AppModel& it) { it.refreshVolume(); }                       },
    };
    for (const Case& c : cases) {
        // Once before the work can have ended, and once between its end and its way home.
        for (const bool waits : {false, true}) {
            SCOPED_TRACE(c.name);
            c.start(model());
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
    EXPECT_GE(model().journal().size(), 50U);
}

}  // namespace
}  // namespace Brimlo
