#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Journal/JournalEntry.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Brimlo {

struct CleanReport;

/// The result of a clean, for the screens. All zero and empty before the first clean.
class ReportFigures {
    Q_GADGET
    QML_VALUE_TYPE(reportFigures)

    Q_PROPERTY(int processed MEMBER processed)
    Q_PROPERTY(double freedNow MEMBER freedNow)
    Q_PROPERTY(double movedToTrash MEMBER movedToTrash)
    Q_PROPERTY(int untouched MEMBER untouched)
    Q_PROPERTY(QStringList problems MEMBER problems)
    Q_PROPERTY(QStringList goneForGood MEMBER goneForGood)
    Q_PROPERTY(bool hasProblems READ hasProblems)
    Q_PROPERTY(bool canUndo MEMBER canUndo)
    Q_PROPERTY(bool canUndoAll MEMBER canUndoAll)

public:
    /// With what became of the items since then, according to the journal.
    [[nodiscard]] static ReportFigures of(
        const std::optional<CleanReport>& report, const std::vector<JournalEntry>& journal);

    bool operator==(const ReportFigures&) const = default;

    [[nodiscard]] bool hasProblems() const { return !problems.isEmpty(); }

    int processed = 0;        ///< Items cleaned.
    double freedNow = 0;      ///< Bytes that are free already.
    double movedToTrash = 0;  ///< Bytes moved to the Trash and still there.
    int untouched = 0;        ///< Items not reached, because the clean was stopped.
    QStringList problems;     ///< "name: reason" for what was refused, failed, or cleaned without a
                              ///< journal entry.
    QStringList goneForGood;  ///< The names and sizes of Docker's objects that are gone.
    bool canUndo = false;     ///< Whether an item of this clean may still be in the Trash.
    bool canUndoAll = false;  ///< Whether that is so for all that it removed.

private:
    void follow(const CleanReport& report, const std::vector<JournalEntry>& journal);
};

/// A clean, from the confirmed plan to its result. Main thread; cleans in the background.
class Cleanup : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isCleaning READ isCleaning NOTIFY progressChanged)
    Q_PROPERTY(bool isStopping READ isStopping NOTIFY progressChanged)
    Q_PROPERTY(QString cleaningPath READ cleaningPath NOTIFY progressChanged)
    Q_PROPERTY(int cleaningDone READ cleaningDone NOTIFY progressChanged)
    Q_PROPERTY(int cleaningTotal READ cleaningTotal NOTIFY progressChanged)
    Q_PROPERTY(Brimlo::ReportFigures lastReport READ reportFigures NOTIFY lastReportChanged)
    Q_PROPERTY(bool showResult READ showResult WRITE setShowResult NOTIFY showResultChanged)

public:
    explicit Cleanup(AppModel& app);

    /// Moves the items of a plan to the Trash, removes those that are gone from the suggestions and
    /// the duplicates, then calls `after`. During another clean, only shows a message.
    void run(const CleanPlan& plan, std::function<void()> after = {});

    /// Ends the clean before its next item. What has moved stays in the Trash and in the journal.
    Q_INVOKABLE void stop();
    [[nodiscard]] bool isStopping() const { return progress_.isStopping; }

    /// A plan for these nodes. Aggregates are skipped, since they name no single file.
    [[nodiscard]] static CleanPlan planFor(const std::vector<std::shared_ptr<FileNode>>& nodes);
    /// Runs a plan for nodes, and removes those that are gone from the analyzer's tree and the
    /// large files, whichever scan or search produced them.
    void dispose(const std::vector<std::shared_ptr<FileNode>>& nodes);

    struct Progress {
        bool isCleaning = false;
        bool isStopping = false;
        QString path;  ///< The item being moved, or the name of Docker's object.
        int done = 0;  ///< Items.
        int total = 0;

        bool operator==(const Progress&) const = default;
    };
    void show(Progress progress);
    [[nodiscard]] bool isCleaning() const { return progress_.isCleaning; }
    [[nodiscard]] const QString& cleaningPath() const { return progress_.path; }
    [[nodiscard]] int cleaningDone() const { return progress_.done; }
    [[nodiscard]] int cleaningTotal() const { return progress_.total; }

    /// The result of the last clean.
    [[nodiscard]] const std::optional<CleanReport>& lastReport() const { return lastReport_; }
    [[nodiscard]] ReportFigures reportFigures() const;
    /// Opens the sheet with the result of a clean.
    void show(const CleanReport& report);
    [[nodiscard]] bool showResult() const { return showResult_; }
    /// Closing the sheet leaves a message that offers to undo the clean, if that is possible.
    void setShowResult(bool show);

Q_SIGNALS:
    void progressChanged();
    void lastReportChanged();
    void showResultChanged();

private:
    AppModel& app_;
    Progress progress_;
    std::shared_ptr<std::atomic<bool>> isStopped_;  ///< Of the clean that is running.
    std::optional<CleanReport> lastReport_;
    bool showResult_ = false;
};

}  // namespace Brimlo
