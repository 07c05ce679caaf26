#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/DisabledRules/DisabledRules.h"
#include "BrimloCore/Docker/DockerObject.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

// From Rescan to a cleaned disk: the suggestions, what is ticked of them, and the clean itself.

namespace Brimlo {

void AppModel::loadSuggestions() {
    if (isSuggesting_) {
        return;
    }
    readConfig();
    assign(disabledRuleIDs_, DisabledRules::load(), &AppModel::disabledRuleIDsChanged);
    assign(isSuggesting_, true, &AppModel::isSuggestingChanged);
    assign(suggestPhase_, QStringLiteral("Starting…"), &AppModel::suggestPhaseChanged);
    assign(suggestStarted_, QDateTime::currentDateTime(), &AppModel::suggestStartedChanged);
    auto tellPhase = [model = QPointer{this}](const std::string_view phase) {
        postHome(model, [text = QString::fromUtf8(phase)](AppModel& present) {
            present.assign(present.suggestPhase_, text, &AppModel::suggestPhaseChanged);
        });
    };
    // For all audiences: the picker chooses what is shown, not what is looked for.
    SuggestionOptions options{
        .staleDays = config_.staleDays, .onPhase = std::move(tellPhase), .docker = docker_};
    runInBackground(
        this,
        [options = std::move(options)] { return SuggestionEngine::generate(options); },
        [](AppModel& model, std::vector<Suggestion> found) {
            std::set<std::string> preselected;
            for (const Suggestion& suggestion : found) {
                preselected.insert(
                    suggestion.preselectedPaths.begin(), suggestion.preselectedPaths.end());
            }
            model.setSuggestions(std::move(found));
            model.setSelected(std::move(preselected));
            model.assign(model.isSuggesting_, false, &AppModel::isSuggestingChanged);
            if (std::exchange(model.suggestAgain_, false)) {
                model.loadSuggestions();
            }
        });
}

void AppModel::suggestAnew() {
    suggestAgain_ = isSuggesting_;
    loadSuggestions();
}

std::vector<const Suggestion*> AppModel::visibleSuggestions() const {
    std::vector<const Suggestion*> visible;
    for (const Suggestion& suggestion : suggestions_) {
        if (!personaFilter_ || std::ranges::count(suggestion.personas, *personaFilter_) > 0) {
            visible.push_back(&suggestion);
        }
    }
    return visible;
}

void AppModel::setSuggestions(std::vector<Suggestion> suggestions) {
    assign(suggestions_, std::move(suggestions), &AppModel::suggestionsChanged);
    rebuildPlan();
}

void AppModel::setSelected(std::set<std::string> paths) {
    assign(selected_, std::move(paths), &AppModel::selectedChanged);
    rebuildPlan();
}

void AppModel::rebuildPlan() {
    CleanPlan plan = CleanPlan::of(suggestions_, [this](const Suggestion&, const auto& item) {
        return selected_.contains(item.path);
    });
    assign(currentPlan_, std::move(plan), &AppModel::currentPlanChanged);
}

void AppModel::setPersonaFilter(const std::optional<Persona> persona) {
    assign(personaFilter_, persona, &AppModel::personaFilterChanged);
}

QString AppModel::personaFilterID() const {
    return personaFilter_ ? QString::fromUtf8(rawValue(*personaFilter_)) : QString{};
}

void AppModel::setPersonaFilterID(const QString& id) {
    setPersonaFilter(personaFromRawValue(id.toStdString()));
}

void AppModel::selectAllSafe() {
    std::set<std::string> safe;
    for (const Suggestion& suggestion : suggestions_) {
        if (suggestion.risk == Risk::safe && suggestion.runningApps.empty()) {
            for (const SuggestionItem& item : suggestion.items) {
                safe.insert(item.path);
            }
        }
    }
    setSelected(std::move(safe));
}

void AppModel::clearSelection() {
    setSelected({});
}

void AppModel::toggle(const Suggestion& suggestion) {
    std::set<std::string> paths = selected_;
    const bool isWhole = std::ranges::all_of(
        suggestion.items, [&](const SuggestionItem& item) { return paths.contains(item.path); });
    for (const SuggestionItem& item : suggestion.items) {
        if (isWhole) {
            paths.erase(item.path);
        } else {
            paths.insert(item.path);
        }
    }
    setSelected(std::move(paths));
}

void AppModel::toggle(const std::string& path) {
    std::set<std::string> paths = selected_;
    if (paths.erase(path) == 0) {
        paths.insert(path);
    }
    setSelected(std::move(paths));
}

void AppModel::runClean(
    const CleanPlan& plan, const DisposalMode mode, std::function<void()> after) {
    if (isCleaning_) {
        setBanner(QStringLiteral("Could not start: another cleanup is still running."));
        return;
    }
    assign(isCleaning_, true, &AppModel::isCleaningChanged);
    assign(cleaningDone_, 0, &AppModel::cleaningDoneChanged);
    assign(cleaningTotal_, static_cast<int>(plan.items().size()), &AppModel::cleaningTotalChanged);
    auto tellPath = [model = QPointer{this}](const std::string& path) {
        const std::string words = isPseudoPath(path) ? DockerObject::words(path) : path;
        postHome(model, [text = shown(words)](AppModel& present) {
            present.assign(present.cleaningPath_, text, &AppModel::cleaningPathChanged);
            present.assign(
                present.cleaningDone_, present.cleaningDone_ + 1, &AppModel::cleaningDoneChanged);
        });
    };
    struct Cleaned {
        CleanReport report;
        JournalReading journal;
    };
    changeInBackground(
        this,
        [plan, mode, cleaner = cleaner_, tellPath] {
            CleanReport report = cleaner->execute(plan, mode, false, tellPath);
            return Cleaned{.report = std::move(report), .journal = JournalReading::of(*cleaner)};
        },
        [plan, after = std::move(after)](AppModel& model, Cleaned cleaned) {
            model.assign(
                model.lastReport_, std::optional{cleaned.report}, &AppModel::lastReportChanged);
            model.setShowResult(true);
            model.assign(model.isCleaning_, false, &AppModel::isCleaningChanged);
            model.assign(model.cleaningPath_, QString{}, &AppModel::cleaningPathChanged);
            model.refreshVolume();
            model.take(std::move(cleaned.journal));
            model.takeCleaned(plan, cleaned.report);
            if (after) {
                after();
            }
        });
}

void AppModel::takeCleaned(const CleanPlan& plan, const CleanReport& report) {
    std::set<std::string> failed;
    std::ranges::transform(
        report.failures, std::inserter(failed, failed.end()), &ItemProblem::path);
    std::set<std::string> gone;
    std::set<std::string> paths = selected_;
    for (const CleanItem& item : plan.items()) {
        paths.erase(item.path);
        if (!failed.contains(item.path)) {
            gone.insert(item.path);
        }
    }
    std::vector<Suggestion> left = suggestions_;
    for (Suggestion& suggestion : left) {
        std::erase_if(
            suggestion.items, [&](const SuggestionItem& item) { return gone.contains(item.path); });
    }
    std::erase_if(left, [](const Suggestion& suggestion) { return suggestion.items.empty(); });
    setSuggestions(std::move(left));
    setSelected(std::move(paths));
}

void AppModel::setShowResult(const bool show) {
    assign(showResult_, show, &AppModel::showResultChanged);
}

}  // namespace Brimlo
