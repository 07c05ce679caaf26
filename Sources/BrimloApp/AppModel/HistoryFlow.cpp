#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/JournalReading.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloApp/AppModel/Shown.h"
#include "BrimloCore/Platform/Privacy.h"

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

void AppModel::runBusy(const QString& text, std::function<std::string()> work) {
    setBusy(text);
    struct Done {
        std::string sentence;
        JournalReading journal;
    };
    changeInBackground(
        this,
        [work = std::move(work), cleaner = cleaner_] {
            std::string sentence = work();
            return Done{.sentence = std::move(sentence), .journal = JournalReading::of(*cleaner)};
        },
        [](AppModel& model, Done done) {
            model.setBusy({});
            model.setBanner(shown(done.sentence));
            model.refreshVolume();
            model.take(std::move(done.journal));
        });
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
        return cleaner->undo(ids).sentence();
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
        return report.emptiedSentence() +
               (mayBePrivacy ? " Grant Full Disk Access if this persists." : "");
    });
}

void AppModel::purgeOwnTrash() {
    if (!busy_.isEmpty()) {
        return;
    }
    runBusy(QStringLiteral("Removing from Trash…"), [cleaner = cleaner_] {
        return cleaner->purgeOwnTrash(0, false).purgedSentence(false);
    });
}

}  // namespace Brimlo
