#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Journal/JournalEntry.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Brimlo {

/// The journal and the Trash at one moment.
struct JournalReading {
    std::uint64_t number = 0;           ///< Increases with each reading in this process.
    std::vector<JournalEntry> entries;  ///< Newest first.
    std::vector<HistoryBatch> batches;  ///< The same, grouped by clean, newest first.

    std::string problem;  ///< Why the journal can't be read; empty if it can.

    /// Reads the journal and looks for each item in the Trash. Blocks; any thread.
    [[nodiscard]] static JournalReading of(Cleaner& cleaner);
};

class HistoryRows;
class TrashQuestion;

/// What was cleaned, and how to restore or delete it. Main thread; restoring, emptying and purging
/// run in the background and take `busy`, so that only one of them runs at a time.
class History : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/History/HistoryRows.h")
    Q_MOC_INCLUDE("BrimloApp/History/TrashQuestion.h")

    Q_PROPERTY(QString journalProblem READ journalProblem NOTIFY journalProblemChanged)
    Q_PROPERTY(bool isJournalRead READ isJournalRead NOTIFY journalChanged)
    Q_PROPERTY(QStringList stayed READ stayed NOTIFY stayedChanged)
    Q_PROPERTY(Brimlo::HistoryRows* rows READ rows CONSTANT)
    Q_PROPERTY(Brimlo::TrashQuestion* question READ question CONSTANT)

public:
    explicit History(AppModel& app);
    ~History() override;

    Q_DISABLE_COPY_MOVE(History)

    /// Reads the journal in the background: another process may hold its lock during a whole clean.
    void readJournal();
    /// Shows a reading, unless a later one is already shown.
    void show(JournalReading reading);
    /// Whether the journal has been read since the program started.
    [[nodiscard]] bool isJournalRead() const { return reading_.number > 0; }
    /// The entries last read, newest first.
    [[nodiscard]] const std::vector<JournalEntry>& journal() const { return reading_.entries; }
    /// The same, grouped by clean, newest first.
    [[nodiscard]] const std::vector<HistoryBatch>& batches() const { return reading_.batches; }
    /// Why the journal can't be read; empty if it can.
    [[nodiscard]] const QString& journalProblem() const { return journalProblem_; }

    void undoBatch(const HistoryBatch& batch);
    /// Restores the items of these journal entries, as far as possible.
    void undoAll(const std::vector<Uuid>& ids);
    /// Restores what the last clean moved to the Trash.
    Q_INVOKABLE void undoLastClean();
    /// "path: reason" for each item that the last undo could not restore, until the user has read
    /// them.
    [[nodiscard]] const QStringList& stayed() const { return stayed_; }
    void showStayed(const std::vector<ItemProblem>& problems);
    Q_INVOKABLE void forgetStayed() { showStayed({}); }
    /// Deletes everything in the Trash. The screens ask first (`question`).
    void emptyTrash();
    /// Deletes from the Trash everything that Brimlo moved there, however recently. The screens ask
    /// first.
    void purgeOwnTrash();

    [[nodiscard]] HistoryRows* rows() const { return rows_.get(); }
    [[nodiscard]] TrashQuestion* question() const { return question_.get(); }

Q_SIGNALS:
    void journalChanged();
    void journalProblemChanged();
    void stayedChanged();

private:
    AppModel& app_;
    JournalReading reading_;
    QString journalProblem_;
    QStringList stayed_;
    const std::unique_ptr<HistoryRows> rows_;
    const std::unique_ptr<TrashQuestion> question_;
};

}  // namespace Brimlo
