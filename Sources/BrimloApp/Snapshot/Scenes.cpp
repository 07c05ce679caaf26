#include "BrimloApp/Snapshot/Scenes.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Snapshot/CannedData.h"
#include "BrimloApp/Snapshot/CannedState.h"
#include "BrimloApp/Snapshot/Stage.h"

#include <QtCore/QList>

#include <algorithm>
#include <utility>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

/// A scene that a section shows by itself once the model is in some states.
template <typename... States>
Scene showing(const QString& name, const Section section, States... states) {
    return {name, [=](Stage& stage) {
                (states(stage.model()), ...);
                stage.model().setSection(section);
                Stage::wait(0ms);
                CannedState::measured(stage.model());
                Stage::wait(0ms);
                return true;
            }};
}

/// A scene that needs more than that.
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

/// Changes the model once its screen is shown.
std::function<bool(Stage&)> doing(void (*change)(AppModel& model)) {
    return [=](Stage& stage) {
        change(stage.model());
        return true;
    };
}

/// The same for what opens the editor of rules, which looks for what the rule matches.
std::function<bool(Stage&)> editing(void (*open)(AppModel& model)) {
    return [=](Stage& stage) {
        open(stage.model());
        Stage::wait(1s);
        return true;
    };
}

std::vector<Scene> windowScenes() {
    using enum Sections::Section;
    return {
        showing("overview", Overview),
        showing("overview-suggested", Overview, CannedState::suggested),
        then(showing("overview-without-access", Overview), doing([](AppModel& model) {
                 CannedState::withoutAccess(model);
                 CannedState::busy(model, "Emptying Trash…");
                 model.setBanner("Export failed: Permission denied");
             })),
        then(showing("menu", Overview), press("Menu")),
        then(
            then(showing("about", Overview), press("Menu")),
            [](Stage& stage) { return stage.press(QAccessible::MenuItem, "About Brimlo"); }),
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
        then(as("clean-preview"), press("Preview")),
        then(as("clean-review"), press("Review & Clean…")),
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
                 const auto& folders = *model.analyzer()->root()->children;
                 model.analyzer()->drill(*std::ranges::find(folders, "Downloads", &FileNode::name));
             })),
        then(as("analyzer-review"), keys(list, {Qt::Key_Down, Qt::Key_Delete})),
        showing("large-files-start", LargeFiles),
        showing("large-files-searching", LargeFiles, CannedState::findingLargeFiles),
        showing("large-files", LargeFiles, CannedState::foundLargeFiles),
        showing("large-files-none", LargeFiles, CannedState::foundNoLargeFiles),
        showing("duplicates-start", Duplicates),
        showing("duplicates-searching", Duplicates, CannedState::findingDuplicates),
        showing("duplicates", Duplicates, CannedState::foundDuplicates),
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

}  // namespace Brimlo
