#include "BrimloApp/Review/Cleanup.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Components/Format.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloCore/Docker/DockerSnapshot.h"
#include "BrimloCore/Platform/Fmt.h"

#include <algorithm>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace Brimlo {

namespace {

/// The item that a clean has reached. A busy main thread is notified once and then reads the newest
/// item, however many have passed in the meantime. Any thread.
class NewestItem {
public:
    struct State {
        CleanItem item;
        int done = 0;  ///< Items, including this one.
    };

    /// Whether to notify the main thread; false if it was notified and has not read yet.
    bool set(const CleanItem& item) {
        const std::scoped_lock lock{mutex_};
        state_.item = item;
        ++state_.done;
        return !std::exchange(isUnread_, true);
    }

    State read() {
        const std::scoped_lock lock{mutex_};
        isUnread_ = false;
        return state_;
    }

private:
    std::mutex mutex_;
    State state_;
    bool isUnread_ = false;
};

/// "Docker image shop:3 (ab12): reason", "Caches, /home/u/cache: reason".
std::string lineOf(const ItemProblem& problem) {
    if (isPseudoPath(problem.path)) {
        const std::string title = problem.title.value_or("");
        return DockerObject::words(problem.path, title) + ": " + problem.reason;
    }
    return (problem.title ? *problem.title + ", " : "") + problem.text();
}

}  // namespace

ReportFigures ReportFigures::of(
    const std::optional<CleanReport>& report, const std::vector<JournalEntry>& journal) {
    if (!report) {
        return {};
    }
    ReportFigures figures;
    figures.processed = static_cast<int>(report->processed);
    figures.freedNow = static_cast<double>(report->freedNowBytes);
    figures.movedToTrash = static_cast<double>(report->movedToTrashBytes);
    for (const auto* problems : {&report->refused, &report->failures, &report->unrecorded}) {
        for (const ItemProblem& problem : *problems) {
            figures.problems.append(shown(lineOf(problem)));
        }
    }
    figures.untouched = static_cast<int>(report->untouched.size());
    for (const CleanItem& item : report->goneForGood) {
        figures.goneForGood.append(shown(item.name() + ", " + Fmt::bytes(item.size)));
    }
    figures.follow(*report, journal);
    return figures;
}

void ReportFigures::follow(const CleanReport& report, const std::vector<JournalEntry>& journal) {
    // An entry that the journal lacks was not read yet.
    std::set<Uuid> unknown{report.journalIDs.begin(), report.journalIDs.end()};
    canUndoAll = report.canUndoAll();
    for (const JournalEntry& entry : journal) {
        if (unknown.empty()) {
            break;
        }
        if (unknown.erase(entry.id) == 0) {
            continue;
        }
        const JournalEntry::State state = entry.state();
        const auto size = static_cast<double>(entry.size);
        canUndo = canUndo || state == JournalEntry::State::inTrash;
        freedNow += state == JournalEntry::State::gone ? size : 0;
        if (state == JournalEntry::State::gone || state == JournalEntry::State::restored) {
            movedToTrash = std::max(0.0, movedToTrash - size);
            canUndoAll = false;
        }
    }
    canUndo = canUndo || (!unknown.empty() && report.canUndo());
}

Cleanup::Cleanup(AppModel& app)
    : app_{app} {}

void Cleanup::run(const CleanPlan& plan, std::function<void()> after) {
    if (isCleaning()) {
        app_.banner()->show(QStringLiteral("Could not start: another cleanup is still running."));
        return;
    }
    show(Progress{.isCleaning = true, .path = {}, .total = static_cast<int>(plan.items().size())});
    const auto newest = std::make_shared<NewestItem>();
    isStopped_ = std::make_shared<std::atomic<bool>>(false);
    auto tellItem = [cleanup = QPointer{this}, newest](const CleanItem& item) {
        if (!newest->set(item)) {
            return;
        }
        postHome(cleanup, [newest](Cleanup& present) {
            Progress progress = present.progress_;
            const auto [newestItem, done] = newest->read();
            progress.path = shown(newestItem.name());
            progress.done = done;
            present.show(std::move(progress));
        });
    };
    struct Cleaned {
        CleanReport report;
        JournalReading journal;
    };
    changeInBackground(
        this,
        [plan, cleaner = app_.cleaner(), tellItem, isStopped = isStopped_] {
            const CleanOptions options{
                .progress = tellItem, .isStopped = [isStopped] { return isStopped->load(); }};
            CleanReport report = cleaner->execute(plan, DisposalMode::trash, false, options);
            return Cleaned{.report = std::move(report), .journal = JournalReading::of(*cleaner)};
        },
        [plan, after = std::move(after)](Cleanup& cleanup, Cleaned cleaned) {
            cleanup.show(cleaned.report);
            cleanup.show(Progress{});
            cleanup.app_.machine()->refresh();
            cleanup.app_.history()->show(std::move(cleaned.journal));
            cleanup.app_.smartClean()->forget(plan, cleaned.report);
            cleanup.app_.duplicates()->forget(plan.without(cleaned.report.stayed()));
            if (after) {
                after();
            }
        });
}

void Cleanup::stop() {
    if (isCleaning()) {
        *isStopped_ = true;
        Progress progress = progress_;
        progress.isStopping = true;
        show(std::move(progress));
    }
}

CleanPlan Cleanup::planFor(const std::vector<std::shared_ptr<FileNode>>& nodes) {
    std::vector<CleanItem> items;
    for (const auto& node : nodes) {
        if (!node->isAggregate) {
            items.push_back({.path = node->path(), .size = node->size, .ruleID = {}, .risk = {}});
        }
    }
    return CleanPlan{items};
}

void Cleanup::dispose(const std::vector<std::shared_ptr<FileNode>>& nodes) {
    const CleanPlan plan = planFor(nodes);
    if (plan.items().empty()) {
        return;
    }
    run(plan, [this, nodes] {
        const std::set<std::string> stayed = lastReport_.value_or(CleanReport{}).stayed();
        std::vector<std::shared_ptr<FileNode>> gone;
        std::set<std::string> paths;
        for (const auto& node : nodes) {
            if (!node->isAggregate && !stayed.contains(node->path())) {
                gone.push_back(node);
                paths.insert(node->path());
            }
        }
        app_.analyzer()->forget(gone);
        app_.largeFiles()->forget(paths);
    });
}

ReportFigures Cleanup::reportFigures() const {
    return ReportFigures::of(lastReport_, app_.history()->journal());
}

void Cleanup::show(Progress progress) {
    assign(*this, progress_, std::move(progress), &Cleanup::progressChanged);
}

void Cleanup::show(const CleanReport& report) {
    assign(*this, lastReport_, report, &Cleanup::lastReportChanged);
    setShowResult(true);
}

void Cleanup::setShowResult(bool show) {
    const bool closes = showResult_ && !show;
    assign(*this, showResult_, show, &Cleanup::showResultChanged);
    const ReportFigures figures = reportFigures();
    if (closes && figures.canUndo && app_.busy().isEmpty()) {
        app_.banner()->offerUndo(
            QStringLiteral("Moved %1 to the Trash.").arg(Format::bytes(figures.movedToTrash)));
    }
}

}  // namespace Brimlo
