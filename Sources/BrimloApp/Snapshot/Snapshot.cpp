#include "BrimloApp/Snapshot/Snapshot.h"

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

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <utility>

namespace Brimlo::Snapshot {

namespace {

using namespace std::chrono_literals;

/// One picture of the application.
struct Scene {
    QString name;  ///< Also the start of its file names.
    /// Brings a new stage to the scene; false if a control that this needs is missing.
    std::function<bool(Stage&)> set;
};

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

std::vector<Scene> allScenes() {
    std::vector<Scene> scenes;
    for (const auto& part : {windowScenes(), cleanScenes(), analysisScenes(), upkeepScenes()}) {
        scenes.insert(scenes.end(), part.begin(), part.end());
    }
    return scenes;
}

constexpr std::array kSizes{
    QSize{1000, 660},
    QSize{1440, 900}
};

/// Whether a picture has only one colour, as when the window could not be drawn.
bool isEmpty(const QImage& picture) {
    const QRgb first = picture.isNull() ? 0 : picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != first) {
                return false;
            }
        }
    }
    return true;
}

bool fail(const QString& what) {
    std::cerr << "brimlo-app: " << what.toStdString() << '\n';
    return false;
}

bool save(const Scene& scene, const QDir& folder) {
    Stage stage;
    if (!stage.isOpen() || !scene.set(stage)) {
        return fail(scene.name + ": could not be shown");
    }
    for (const QSize size : kSizes) {
        for (const auto& [look, word] : {
                 std::pair{Stage::Look::light, "light"},
                 std::pair{Stage::Look::dark,  "dark" }
        }) {
            const QString file = QString{"%1-%2-%3x%4.png"}
                                     .arg(scene.name, word)
                                     .arg(size.width())
                                     .arg(size.height());
            const QImage picture = stage.picture(look, size);
            if (picture.size() != size || isEmpty(picture)) {
                return fail(file + ": the picture is empty");
            }
            if (!picture.save(folder.filePath(file), "PNG")) {
                return fail(folder.filePath(file) + ": could not be written");
            }
        }
    }
    return true;
}

}  // namespace

void isolate() {
    static const QTemporaryDir kHome;
    qputenv("HOME", kHome.path().toUtf8());
    qputenv("CFFIXED_USER_HOME", kHome.path().toUtf8());  // The equivalent on macOS.
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        qunsetenv(name);
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("TZ", "UTC");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
}

int saveAll(const QString& folder) {
    if (!QDir{}.mkpath(folder)) {
        fail(folder + ": could not be made");
        return EXIT_FAILURE;
    }
    CannedState::furnishHome();
    bool isWhole = true;
    for (const Scene& scene : allScenes()) {
        isWhole = save(scene, QDir{folder}) && isWhole;
    }
    return isWhole ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace Brimlo::Snapshot
