#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/JournalReading.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/Platform/Privacy.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <utility>

// What went, and the ways back and out: restoring, emptying, purging. These take `busy`, so that
// only one of them runs at a time.

namespace Brimlo {

void AppModel::readJournal() {
    // Another process may hold the journal's lock for the whole of a clean.
    runInBackground(
        this,
        [cleaner = cleaner_] { return JournalReading::of(*cleaner); },
        [](AppModel& model, JournalReading reading) { model.take(std::move(reading)); });
}

void AppModel::take(JournalReading reading) {
    // Two operations may end in another order than they have read the journal in.
    if (reading.number < journalReading_) {
        return;
    }
    const bool isFirst = std::exchange(journalReading_, reading.number) == 0;
    assign(journalProblem_, shown(reading.problem), &AppModel::journalProblemChanged);
    if (isFirst || journal_ != reading.entries) {
        journal_ = std::move(reading.entries);
        historyBatches_ = std::move(reading.batches);
        Q_EMIT journalChanged();
    }
}

void AppModel::runBusy(const QString& text, std::function<Outcome()> work) {
    setBusy(text);
    struct Done {
        Outcome outcome;
        JournalReading journal;
    };
    changeInBackground(
        this,
        [work = std::move(work), cleaner = cleaner_] {
            Outcome outcome = work();
            return Done{.outcome = std::move(outcome), .journal = JournalReading::of(*cleaner)};
        },
        [](AppModel& model, Done done) {
            model.setBusy({});
            model.setBanner(shown(done.outcome.sentence));
            model.refreshVolume();
            model.take(std::move(done.journal));
            model.takeRestored(done.outcome.restored);
        });
}

void AppModel::takeRestored(const std::vector<std::string>& paths) {
    const auto holdsOne = [&](const std::string& folder) {
        return std::ranges::any_of(
            paths, [&](const std::string& path) { return Path::below(folder, path).has_value(); });
    };
    if (paths.empty()) {
        return;
    }
    suggestAnew();
    if (isScanning_ ? holdsOne(scanRoot_) : root_ && holdsOne(root_->path)) {
        scanAnew();
    }
    if ((isFindingLarge_ || largeSearched_) && holdsOne(largeRoot_)) {
        findLargeFilesAnew();
    }
    if ((isFindingDupes_ || dupsSearched_) && holdsOne(dupRoot_)) {
        findDuplicatesAnew();
    }
}

void AppModel::undoBatch(const HistoryBatch& batch) {
    std::vector<Uuid> ids;
    for (const JournalEntry& entry : batch.items) {
        if (entry.isRestorable()) {
            ids.push_back(entry.id);
        }
    }
    undoAll(ids);
}

void AppModel::undoLastClean() {
    if (lastReport_) {
        undoAll(lastReport_->journalIDs);
    }
}

void AppModel::undoAll(const std::vector<Uuid>& ids) {
    if (!busy_.isEmpty()) {
        return;
    }
    setShowResult(false);
    runBusy(QStringLiteral("Restoring…"), [ids, cleaner = cleaner_] {
        UndoReport report = cleaner->undo(ids);
        return Outcome{.sentence = report.sentence(), .restored = std::move(report.restored)};
    });
}

void AppModel::emptyTrash() {
    if (!busy_.isEmpty()) {
        return;
    }
    runBusy(QStringLiteral("Emptying Trash…"), [] {
        const TrashReport report = Cleaner::emptyTrash();
        const bool mayBePrivacy =
            !report.failures.empty() && !Platform::privacySettingsAddress().empty();
        const char* advice = mayBePrivacy ? " Grant Full Disk Access if this persists." : "";
        return Outcome{.sentence = report.emptiedSentence() + advice, .restored = {}};
    });
}

void AppModel::purgeOwnTrash() {
    if (!busy_.isEmpty()) {
        return;
    }
    runBusy(QStringLiteral("Removing from Trash…"), [cleaner = cleaner_] {
        const TrashReport report = cleaner->purgeOwnTrash(0, false);
        return Outcome{.sentence = report.purgedSentence(false), .restored = {}};
    });
}

}  // namespace Brimlo
