#include "BrimloApp/History/History.h"

#include "BrimloApp/History/HistoryRows.h"
#include "BrimloApp/History/TrashQuestion.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Platform/Privacy.h"

#include <atomic>
#include <set>
#include <utility>

namespace Brimlo {

JournalReading JournalReading::of(Cleaner& cleaner) {
    // Taken before the file is read, so that the reading with the higher number has seen everything
    // that was written before the other began.
    static std::atomic<std::uint64_t> last = 0;
    JournalReading reading{.number = ++last};
    if (auto entries = cleaner.history()) {
        reading.entries = *std::move(entries);
        reading.batches = HistoryBatch::group(reading.entries);
    } else {
        reading.problem = entries.error().description;
    }
    return reading;
}

History::History(AppModel& app)
    : app_{app}
    , rows_{std::make_unique<HistoryRows>(*this)}
    , question_{std::make_unique<TrashQuestion>(app)} {
    // The result of a clean tells how many of its items are still in the Trash.
    connect(this, &History::journalChanged, app.cleanup(), &Cleanup::lastReportChanged);
}

History::~History() = default;

void History::readJournal() {
    runInBackground(
        this,
        [cleaner = app_.cleaner()] { return JournalReading::of(*cleaner); },
        [](History& history, JournalReading reading) { history.show(std::move(reading)); });
}

void History::show(JournalReading reading) {
    // Two operations may finish in another order than they read the journal.
    if (reading.number < reading_.number) {
        return;
    }
    const bool isOther = !isJournalRead() || reading_.entries != reading.entries;
    reading_ = std::move(reading);
    assign(*this, journalProblem_, shown(reading_.problem), &History::journalProblemChanged);
    if (isOther) {
        Q_EMIT journalChanged();
    }
}

void History::undoBatch(const HistoryBatch& batch) {
    std::vector<Uuid> ids;
    for (const JournalEntry& entry : batch.items) {
        if (entry.isRestorable()) {
            ids.push_back(entry.id);
        }
    }
    undoAll(ids);
}

void History::undoLastClean() {
    const auto& report = app_.cleanup()->lastReport();
    if (!report) {
        return;
    }
    // Of what went for good, nobody expects the way back.
    std::set<Uuid> removed;
    for (const JournalEntry& entry : journal()) {
        if (entry.state() == JournalEntry::State::removed) {
            removed.insert(entry.id);
        }
    }
    std::vector<Uuid> ids = report->journalIDs;
    std::erase_if(ids, [&](const Uuid& id) { return removed.contains(id); });
    undoAll(ids);
}

void History::showStayed(const std::vector<ItemProblem>& problems) {
    QStringList lines;
    for (const ItemProblem& problem : problems) {
        lines.append(shown(problem.text()));
    }
    assign(*this, stayed_, lines, &History::stayedChanged);
}

void History::undoAll(const std::vector<Uuid>& ids) {
    if (!app_.busy().isEmpty()) {
        return;
    }
    app_.runBusy(QStringLiteral("Restoring…"), [ids, cleaner = app_.cleaner()] {
        UndoReport report = cleaner->undo(ids);
        return AppModel::Outcome{
            .sentence = report.sentence(),
            .restored = std::move(report.restored),
            .stayed = std::move(report.failures)};
    });
    app_.cleanup()->setShowResult(false);
}

void History::emptyTrash() {
    if (!app_.busy().isEmpty()) {
        return;
    }
    app_.runBusy(QStringLiteral("Emptying Trash…"), [] {
        const TrashReport report = Cleaner::emptyTrash();
        const bool mayBePrivacy =
            !report.failures.empty() && !Platform::privacySettingsAddress().empty();
        const char* advice = mayBePrivacy ? " Grant Full Disk Access if this persists." : "";
        return AppModel::Outcome{.sentence = report.emptiedSentence() + advice, .restored = {}};
    });
}

void History::purgeOwnTrash() {
    if (!app_.busy().isEmpty()) {
        return;
    }
    app_.runBusy(QStringLiteral("Removing from Trash…"), [cleaner = app_.cleaner()] {
        const TrashReport report = cleaner->purgeOwnTrash(0, false);
        return AppModel::Outcome{.sentence = report.purgedSentence(false), .restored = {}};
    });
}

}  // namespace Brimlo
