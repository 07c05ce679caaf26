#pragma once

#include "BrimloApp/History/JournalReading.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace Brimlo {

class HistoryRows;

/// What went, and the ways back and out. Main thread; restoring, emptying and purging run in the
/// background and take `busy`, so that only one of them runs at a time.
class History : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/History/HistoryRows.h")

    Q_PROPERTY(QString journalProblem READ journalProblem NOTIFY journalProblemChanged)
    Q_PROPERTY(bool isJournalRead READ isJournalRead NOTIFY journalChanged)
    Q_PROPERTY(Brimlo::HistoryRows* rows READ rows CONSTANT)

public:
    explicit History(AppModel& app);
    ~History() override;

    Q_DISABLE_COPY_MOVE(History)

    /// Reads the journal, in the background: another process may hold its lock for the whole of a
    /// clean.
    void readJournal();
    /// Shows what was read, unless a later reading is shown already.
    void show(JournalReading reading);
    /// Whether the journal has been read since the start.
    [[nodiscard]] bool isJournalRead() const { return reading_.number > 0; }
    /// The journal as last read, newest first.
    [[nodiscard]] const std::vector<JournalEntry>& journal() const { return reading_.entries; }
    /// The same by cleanup, newest first.
    [[nodiscard]] const std::vector<HistoryBatch>& batches() const { return reading_.batches; }
    /// Why the journal can't be read; empty when it can.
    [[nodiscard]] const QString& journalProblem() const { return journalProblem_; }

    void undoBatch(const HistoryBatch& batch);
    /// Puts back the items of these journal entries, as far as they can be.
    void undoAll(const std::vector<Uuid>& ids);
    /// Puts back what the last clean took.
    Q_INVOKABLE void undoLastClean();
    Q_INVOKABLE void emptyTrash();
    /// Deletes from the Trash what Brimlo moved there, however short ago.
    Q_INVOKABLE void purgeOwnTrash();

    [[nodiscard]] HistoryRows* rows() const { return rows_.get(); }

Q_SIGNALS:
    void journalChanged();
    void journalProblemChanged();

private:
    AppModel& app_;
    JournalReading reading_;
    QString journalProblem_;
    const std::unique_ptr<HistoryRows> rows_;
};

}  // namespace Brimlo
