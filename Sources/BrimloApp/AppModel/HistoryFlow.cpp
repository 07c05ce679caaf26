#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/JournalReading.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloCore/Support/Fmt.h"

#include <algorithm>
#include <utility>

// What went, and the ways back and out: restoring, emptying, purging. These take `busy`, so that
// only one of them runs at a time.

namespace Brimlo {

void AppModel::take(JournalReading reading) {
    // Two operations may end in another order than they have read the journal in.
    if (reading.number < journalReading_) {
        return;
    }
    journalReading_ = reading.number;
    if (journal_ != reading.entries) {
        journal_ = std::move(reading.entries);
        historyBatches_ = std::move(reading.batches);
        Q_EMIT journalChanged();
    }
}

void AppModel::runBusy(const QString& text, std::function<QString()> work) {
    setBusy(text);
    struct Done {
        QString banner;
        JournalReading journal;
    };
    runInBackground(
        this,
        [work = std::move(work), journal = journalFile_] {
            QString banner = work();
            return Done{.banner = std::move(banner), .journal = JournalReading::of(*journal)};
        },
        [](AppModel& model, Done done) {
            model.setBusy({});
            model.setBanner(done.banner);
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
    runBusy(
        QStringLiteral("Restoring…"),
        [wanted = std::set<Uuid>{ids.begin(), ids.end()},
         journal = journalFile_,
         cleaner = cleaner_] {
            int restored = 0;
            int diverted = 0;
            for (const JournalEntry& entry : journal->entries()) {
                if (entry.undone || !wanted.contains(entry.id)) {
                    continue;
                }
                if (const auto path = cleaner->undo(entry)) {
                    ++restored;
                    diverted += *path != entry.originalPath ? 1 : 0;
                }
            }
            QString banner = QStringLiteral("Restored %1 item(s).").arg(restored);
            if (diverted > 0) {
                banner += QStringLiteral(
                              " %1 went to a “(restored)” copy because the original "
                              "location was in use.")
                              .arg(diverted);
            }
            return banner;
        });
}

void AppModel::emptyTrash() {
    if (!busy_.isEmpty()) {
        return;
    }
    runBusy(QStringLiteral("Emptying Trash…"), [] {
        const auto freed = Cleaner::emptyTrash();
        return freed ? QStringLiteral("Emptied Trash: freed %1.")
                           .arg(QString::fromStdString(Fmt::bytes(*freed)))
                     : QStringLiteral(
                           "Could not empty Trash: %1. Grant Full Disk Access if this "
                           "persists.")
                           .arg(QString::fromStdString(freed.error().description));
    });
}

void AppModel::purgeOwnTrash() {
    if (!busy_.isEmpty()) {
        return;
    }
    runBusy(QStringLiteral("Removing from Trash…"), [cleaner = cleaner_] {
        const std::int64_t removed = cleaner->purgeOwnTrash(0, false);
        return QStringLiteral("Permanently removed %1 that Brimlo had moved to Trash.")
            .arg(QString::fromStdString(Fmt::bytes(removed)));
    });
}

}  // namespace Brimlo
