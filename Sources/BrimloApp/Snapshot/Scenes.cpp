#include "BrimloApp/Snapshot/Scenes.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/History/TrashQuestion.h"
#include "BrimloApp/Overview/DiskAccount.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloApp/Snapshot/CannedData.h"
#include "BrimloApp/Snapshot/CannedState.h"
#include "BrimloApp/Snapshot/Stage.h"

#include <QtCore/QList>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace Brimlo::Snapshot {

namespace {

using namespace std::chrono_literals;

/// A scene that a section shows once the model is in some states.
template <typename... States>
Scene showing(const QString& name, Section section, States... states) {
    return {name, [=](Stage& stage) {
                (states(stage.model()), ...);
                stage.model().setSection(section);
                Stage::wait(0ms);
                CannedState::measured(stage.model());
                Stage::wait(0ms);
                return true;
            }};
}

/// A scene with a further step.
Scene then(Scene scene, std::function<bool(Stage&)> more) {
    return {scene.name, [first = std::move(scene.set), more = std::move(more)](Stage& stage) {
                return first(stage) && more(stage);
            }};
}

/// Presses the button of this name.
std::function<bool(Stage&)> press(const QString& name) {
    return [=](Stage& stage) { return stage.press(QAccessible::Button, name); };
}

/// Presses keys in the list of this name.
std::function<bool(Stage&)> keys(const QString& list, const QList<Qt::Key>& keys) {
    return [=](Stage& stage) {
        if (!stage.focus(QAccessible::List, list)) {
            return false;
        }
        for (const Qt::Key key : keys) {
            stage.press(key);
        }
        return true;
    };
}

/// A step that changes the model once its screen is visible.
std::function<bool(Stage&)> doing(void (*change)(AppModel& model)) {
    return [=](Stage& stage) {
        change(stage.model());
        return true;
    };
}

/// The same for a step that opens the rule editor, which then matches the rule.
std::function<bool(Stage&)> editing(void (*open)(AppModel& model)) {
    return [=](Stage& stage) {
        open(stage.model());
        Stage::wait(1s);
        return true;
    };
}

/// Opens the review of a room as if the gate let everything go: the canned items don't exist.
template <auto Room>
void judged(AppModel& model) {
    (model.*Room)()->review()->show(CleanReport{});
}

std::vector<Scene> windowScenes() {
    using enum Sections::Section;
    return {
        showing("overview", Overview),
        showing("overview-suggested", Overview, CannedState::suggested),
        then(showing("overview-without-access", Overview), doing([](AppModel& model) {
                 CannedState::withoutAccess(model);
                 CannedState::busy(model, "Emptying Trash…");
                 model.banner()->show("Export failed: Permission denied");
             })),
        then(showing("overview-undo", Overview, CannedState::suggested), doing([](AppModel& model) {
                 CannedState::cleaned(model, CannedData::report());
                 model.cleanup()->setShowResult(false);
             })),
        then(
            showing("overview-system", Overview, CannedState::suggested),
            [](Stage& stage) {
                Machine& machine = *stage.model().machine();
                machine.setShowsSystem(true);
                while (machine.isMeasuringSystem()) {
                    Stage::wait(10ms);
                }
                machine.show(CannedData::systemParts());
                return true;
            }),
        then(
            showing("overview-account", Overview, CannedState::suggested),
            doing([](AppModel& model) {
                model.diskAccount()->setOpen(true);
                model.diskAccount()->show(CannedData::account());
            })),
        then(showing("menu", Overview), press("Menu")),
        then(
            then(showing("about", Overview), press("Menu")),
            [](Stage& stage) { return stage.press(QAccessible::MenuItem, "About Brimlo"); }),
        then(
            then(showing("shortcuts", Overview), press("Menu")),
            [](Stage& stage) { return stage.press(QAccessible::MenuItem, "Keyboard Shortcuts"); }),
        showing("cli-offer", Overview, CannedState::offeringCLI),
    };
}

std::vector<Scene> cleanScenes() {
    using enum Sections::Section;
    const Scene suggested = showing("clean", Clean, CannedState::suggested);
    const auto as = [&](const QString& name) { return Scene{name, suggested.set}; };
    return {
        showing("clean-suggesting", Clean, CannedState::suggesting),
        then(
            showing("clean-nothing", Clean, CannedState::suggesting),
            doing(CannedState::nothingSuggested)),
        suggested,
        then(
            as("clean-unfolded"), keys("Suggestions", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right})),
        then(as("clean-ratings"), press("What do the ratings mean?")),
        then(then(as("clean-preview"), press("Preview")), doing(judged<&AppModel::smartClean>)),
        then(
            then(as("clean-review"), press("Review & Clean…")),
            doing(judged<&AppModel::smartClean>)),
        then(as("clean-running"), doing(CannedState::cleaning)),
        then(as("result"), doing([](AppModel& model) {
                 CannedState::cleaned(model, CannedData::report());
             })),
        then(as("result-problems"), doing([](AppModel& model) {
                 CannedState::cleaned(model, CannedData::reportWithProblems());
             })),
    };
}

std::vector<Scene> analysisScenes() {
    using enum Sections::Section;
    const Scene scanned = showing("analyzer", Analyzer, CannedState::scanned);
    const auto as = [&](const QString& name) { return Scene{name, scanned.set}; };
    const QString list = "Space Analyzer";
    return {
        showing("analyzer-start", Analyzer),
        showing("analyzer-scanning", Analyzer, CannedState::scanning),
        scanned,
        then(as("analyzer-selected"), keys(list, {Qt::Key_Down})),
        then(as("analyzer-drilled"), keys(list, {Qt::Key_Down, Qt::Key_Right})),
        then(as("analyzer-unreadable"), press("5 unreadable")),
        then(as("analyzer-treemap"), doing([](AppModel& model) {
                 model.analyzer()->setAnalyzerMode(1);
                 const auto folders = model.analyzer()->root()->children();
                 const auto found = std::ranges::find(folders, "Downloads", &FileNode::name);
                 model.analyzer()->drill((*found)->shared());
             })),
        then(
            then(as("analyzer-review"), keys(list, {Qt::Key_Down, Qt::Key_Delete})),
            doing(judged<&AppModel::analyzer>)),
        showing("large-files-start", LargeFiles),
        showing("large-files-searching", LargeFiles, CannedState::findingLargeFiles),
        showing("large-files", LargeFiles, CannedState::foundLargeFiles),
        showing("large-files-none", LargeFiles, CannedState::foundNoLargeFiles),
        showing("duplicates-start", Duplicates),
        showing("duplicates-searching", Duplicates, CannedState::findingDuplicates),
        showing("duplicates", Duplicates, CannedState::foundDuplicates),
        then(
            showing("duplicates-folders", Duplicates, CannedState::foundDuplicates),
            press("2 sets of equal folders…")),
        showing("duplicates-none", Duplicates, CannedState::foundNoDuplicates),
    };
}

std::vector<Scene> upkeepScenes() {
    using enum Sections::Section;
    return {
        showing("rules", Rules, CannedState::withRuleIssues),
        then(
            showing("rule-new", Rules), editing([](AppModel& model) { model.rules()->newRule(); })),
        then(showing("rule-edited", Rules), editing([](AppModel& model) {
                 model.rules()->editRule(model.rules()->customRules().back());
             })),
        then(showing("history", History), keys("Removed by Brimlo", {Qt::Key_Right})),
        then(showing("history-empty", History), doing([](AppModel& model) {
                 model.history()->show({.number = std::numeric_limits<std::uint64_t>::max()});
             })),
        then(
            then(showing("history-purge", History), press("Remove items Brimlo put in Trash")),
            [](Stage& stage) {
                while (!stage.model().history()->question()->isMeasured()) {
                    Stage::wait(10ms);
                }
                return true;
            }),
        showing("settings", Settings),
        then(
            showing("settings-end", Settings),
            [](Stage& stage) { return stage.focus(QAccessible::Button, "Install"); }),
    };
}

}  // namespace

std::vector<Scene> allScenes() {
    std::vector<Scene> scenes;
    for (const auto& part : {windowScenes(), cleanScenes(), analysisScenes(), upkeepScenes()}) {
        scenes.insert(scenes.end(), part.begin(), part.end());
    }
    return scenes;
}

}  // namespace Brimlo::Snapshot
