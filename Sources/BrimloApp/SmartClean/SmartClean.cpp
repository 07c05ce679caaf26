#include "BrimloApp/SmartClean/SmartClean.h"

#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Rules/RuleBook.h"
#include "BrimloApp/Settings/Settings.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

namespace Brimlo {

SmartClean::SmartClean(AppModel& app)
    : app_{app}
    , rows_{std::make_unique<SuggestionRows>(app, *this)}
    , review_{std::make_unique<PlanReview>(app)} {}

SmartClean::~SmartClean() = default;

// ---- The suggestion run --------------------------------------------------------------------

void SmartClean::loadSuggestions() {
    if (isSuggesting()) {
        return;
    }
    app_.settings()->read();
    app_.rules()->readDisabled();
    readLeftAlone();
    if (!leftAloneFault_.isEmpty()) {
        app_.banner()->show(leftAloneFault_);  // Nothing is found then.
    }
    show(
        {.isSuggesting = true,
         .phase = QStringLiteral("Starting…"),
         .started = QDateTime::currentDateTime(),
         .hasSuggested = progress_.hasSuggested});
    auto tellPhase = [part = QPointer{this}](std::string_view phase) {
        postHome(part, [text = QString::fromUtf8(phase)](SmartClean& present) {
            Progress progress = present.progress_;
            progress.phase = text;
            present.show(std::move(progress));
        });
    };
    // For all audiences: the picker only filters the list.
    SuggestionOptions options{
        .staleDays = app_.settings()->config().staleDays,
        .onPhase = std::move(tellPhase),
        .docker = app_.surroundings().docker};
    runInBackground(
        this,
        [options = std::move(options)] { return SuggestionEngine::generate(options); },
        [](SmartClean& part, std::vector<Suggestion> found) {
            part.show(std::move(found));
            Progress progress = part.progress_;
            progress.isSuggesting = false;
            progress.hasSuggested = part.leftAloneFault_.isEmpty();
            part.show(std::move(progress));
            if (std::exchange(part.suggestAgain_, false)) {
                part.loadSuggestions();
            }
        });
}

void SmartClean::suggestAnew() {
    suggestAgain_ = isSuggesting();
    loadSuggestions();
}

void SmartClean::show(Progress progress) {
    assign(*this, progress_, std::move(progress), &SmartClean::progressChanged);
}

// ---- The suggestions -----------------------------------------------------------------------

void SmartClean::show(std::vector<Suggestion> found) {
    std::size_t count = 0;
    for (const Suggestion& suggestion : found) {
        count += suggestion.preselectedPaths.size();
    }
    Paths preselected;
    preselected.reserve(count);
    for (const Suggestion& suggestion : found) {
        preselected.insert(suggestion.preselectedPaths.begin(), suggestion.preselectedPaths.end());
    }
    set(std::move(found), std::move(preselected));
}

void SmartClean::set(std::vector<Suggestion> suggestions, Paths selected) {
    const bool isOther = suggestions_ != suggestions;
    suggestions_ = std::move(suggestions);
    freesOf_.clear();
    for (const Suggestion& suggestion : suggestions_) {
        const FreedSpace freed = FreedSpace::of(suggestion.items);
        freesOf_.emplace(suggestion.id, Frees{.words = freed.words(), .why = freed.reason()});
    }
    const bool isOtherChoice = selected_ != selected;
    selected_ = std::move(selected);
    CleanFigures figures = countTicked();
    if (isOther) {
        Q_EMIT suggestionsChanged();
    }
    if (isOtherChoice) {
        Q_EMIT selectedChanged();
    }
    assign(*this, figures_, std::move(figures), &SmartClean::currentPlanChanged);
}

void SmartClean::forget(const CleanPlan& plan, const CleanReport& report) {
    std::set<std::string> failed;
    std::ranges::transform(
        report.failures, std::inserter(failed, failed.end()), &ItemProblem::path);
    const std::set<std::string> untouched{report.untouched.begin(), report.untouched.end()};
    std::set<std::string> gone;
    Paths paths = selected_;
    for (const CleanItem& item : plan.items()) {
        if (untouched.contains(item.path)) {
            continue;
        }
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
    set(std::move(left), std::move(paths));
}

void SmartClean::forgetRule(const std::string& id) {
    std::vector<Suggestion> left = suggestions_;
    std::erase_if(left, [&](const Suggestion& suggestion) { return suggestion.id == id; });
    setSuggestions(std::move(left));
}

// ---- What is left alone --------------------------------------------------------------------

void SmartClean::readLeftAlone() {
    auto list = LeftAlone::load();
    leftAloneFault_ = list ? QString{} : words(list.error().description) + u'.';
    leftAlone_ = std::move(list).value_or(LeftAlone{});
    Q_EMIT leftAloneChanged();
}

bool SmartClean::changeLeftAlone(const std::function<void(LeftAlone&)>& body) {
    const auto changed = LeftAlone::change(body);
    readLeftAlone();
    if (!changed) {
        app_.banner()->show(words(changed.error().description) + u'.');
    }
    return changed.has_value();
}

void SmartClean::leavePathAlone(const std::string& path, const QString& title) {
    if (!changeLeftAlone([&](LeftAlone& list) { list.paths.insert(path); })) {
        return;
    }
    std::vector<Suggestion> left = suggestions_;
    for (Suggestion& suggestion : left) {
        std::erase_if(suggestion.items, [&](const SuggestionItem& item) {
            return Path::below(path, item.path).has_value();
        });
    }
    std::erase_if(left, [](const Suggestion& suggestion) { return suggestion.items.empty(); });
    leaveAlone(std::move(left), title, [path](LeftAlone& list) { list.paths.erase(path); });
}

void SmartClean::leaveRuleAlone(const std::string& id, const QString& title) {
    if (!changeLeftAlone([&](LeftAlone& list) { list.rules.insert(id); })) {
        return;
    }
    std::vector<Suggestion> left = suggestions_;
    std::erase_if(left, [&](const Suggestion& suggestion) { return suggestion.id == id; });
    leaveAlone(std::move(left), title, [id](LeftAlone& list) { list.rules.erase(id); });
}

void SmartClean::leaveAlone(
    std::vector<Suggestion> left, const QString& title, std::function<void(LeftAlone&)> undo) {
    const auto takeBack = [this, undo = std::move(undo), before = suggestions_, left] {
        if (!changeLeftAlone(undo)) {
            return;
        }
        if (suggestions_ == left) {
            setSuggestions(before);
        } else {
            suggestAnew();
        }
    };
    setSuggestions(std::move(left));
    app_.banner()->offerUndo(QStringLiteral("“%1” is never suggested again.").arg(title), takeBack);
}

void SmartClean::suggestAgain(const QString& name, bool isRule) {
    const bool isDone = changeLeftAlone(
        [&](LeftAlone& list) { (isRule ? list.rules : list.paths).erase(name.toStdString()); });
    if (isDone) {
        suggestAnew();
    }
}

QVariantList SmartClean::leftAlone() const {
    QVariantList rows;
    const auto add = [&](const std::string& name, const QString& title, bool isRule) {
        rows.append(QVariantMap{
            {"name",   QString::fromStdString(name)},
            {"title",  title                       },
            {"isRule", isRule                      }
        });
    };
    const std::vector<CleanupRule> rules =
        leftAlone_.rules.empty() ? std::vector<CleanupRule>{} : Catalog::rules();
    for (const std::string& id : leftAlone_.rules) {
        const auto rule = std::ranges::find(rules, id, &CleanupRule::id);
        add(id, shown(rule == rules.end() ? id : rule->name), true);
    }
    for (const std::string& path : leftAlone_.paths) {
        add(path, shown(path), false);
    }
    return rows;
}

// ---- The ticks and the plan ----------------------------------------------------------------

void SmartClean::setSelected(Paths selected) {
    selected_ = std::move(selected);
    CleanFigures figures = countTicked();
    Q_EMIT selectedChanged();
    assign(*this, figures_, std::move(figures), &SmartClean::currentPlanChanged);
}

CleanFigures SmartClean::countTicked() {
    CleanFigures figures;
    tickedOf_.clear();
    for (const Suggestion& suggestion : suggestions_) {
        std::int64_t& ticked = tickedOf_[suggestion.id];
        for (const SuggestionItem& item : suggestion.items) {
            if (selected_.contains(item.path)) {
                ++ticked;
                figures.add(item);
            }
        }
    }
    return figures;
}

QString SmartClean::planFrees() const {
    return words(figures_.freed.words());
}

QString SmartClean::planDestination() const {
    return words(figures_.destination());
}

CleanPlan SmartClean::planOf(const std::vector<Suggestion>& suggestions, const Paths& selected) {
    return CleanPlan::of(suggestions, [&](const Suggestion&, const auto& item) {
        return selected.contains(item.path);
    });
}

void SmartClean::selectAllSafe() {
    Paths safe;
    for (const Suggestion& suggestion : suggestions_) {
        if (suggestion.risk == Risk::safe && suggestion.runningApps.empty()) {
            for (const SuggestionItem& item : suggestion.items) {
                safe.insert(item.path);
            }
        }
    }
    setSelected(std::move(safe));
}

void SmartClean::clearSelection() {
    setSelected({});
}

void SmartClean::toggle(const Suggestion& suggestion) {
    std::vector<std::string> paths;
    std::ranges::transform(suggestion.items, std::back_inserter(paths), &SuggestionItem::path);
    toggle(suggestion, paths);
}

void SmartClean::toggle(const Suggestion& suggestion, const std::vector<std::string>& together) {
    const bool isWhole = std::ranges::all_of(
        together, [&](const std::string& path) { return selected_.contains(path); });
    const std::unordered_set<std::string_view> meant{together.begin(), together.end()};
    std::int64_t& ticked = tickedOf_[suggestion.id];
    for (const SuggestionItem& item : suggestion.items) {
        if (!meant.contains(item.path)) {
            continue;
        }
        if (isWhole) {
            selected_.erase(item.path);
            figures_.remove(item);
            --ticked;
        } else if (selected_.insert(item.path).second) {
            figures_.add(item);
            ++ticked;
        }
    }
    Q_EMIT selectedChanged();
    Q_EMIT currentPlanChanged();
}

std::int64_t SmartClean::ticked(const Suggestion& suggestion) const {
    const auto found = tickedOf_.find(suggestion.id);
    return found == tickedOf_.end() ? 0 : found->second;
}

const SmartClean::Frees& SmartClean::frees(const Suggestion& suggestion) const {
    static const Frees all;
    const auto found = freesOf_.find(suggestion.id);
    return found == freesOf_.end() ? all : found->second;
}

void SmartClean::setPreviewRequested(bool requested) {
    assign(*this, previewRequested_, requested, &SmartClean::previewRequestedChanged);
}

}  // namespace Brimlo
