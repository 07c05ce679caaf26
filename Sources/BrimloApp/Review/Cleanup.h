#pragma once

#include "BrimloApp/Review/ReportFigures.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/DiskScanner/FileNode.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Brimlo {

/// A clean, from the confirmed plan to what came of it. Main thread; cleans in the background.
class Cleanup : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isCleaning READ isCleaning NOTIFY progressChanged)
    Q_PROPERTY(QString cleaningPath READ cleaningPath NOTIFY progressChanged)
    Q_PROPERTY(int cleaningDone READ cleaningDone NOTIFY progressChanged)
    Q_PROPERTY(int cleaningTotal READ cleaningTotal NOTIFY progressChanged)
    Q_PROPERTY(Brimlo::ReportFigures lastReport READ reportFigures NOTIFY lastReportChanged)
    Q_PROPERTY(bool showResult READ showResult WRITE setShowResult NOTIFY showResultChanged)

public:
    explicit Cleanup(AppModel& app);

    /// Moves the items of a plan to the Trash, then calls `after`. During another clean it only
    /// says so.
    void run(const CleanPlan& plan, std::function<void()> after = {});

    /// The plan to dispose of these nodes. Aggregates have nothing that could go.
    [[nodiscard]] static CleanPlan planFor(const std::vector<std::shared_ptr<FileNode>>& nodes);
    /// Moves nodes to the Trash, and takes those that went out of the tree and the large files that
    /// are shown by then, whichever scan or search those come from.
    void dispose(const std::vector<std::shared_ptr<FileNode>>& nodes);

    struct Progress {
        bool isCleaning = false;
        QString path;  ///< The item that is being moved.
        int done = 0;  ///< Items.
        int total = 0;

        bool operator==(const Progress&) const = default;
    };
    void show(Progress progress);
    [[nodiscard]] bool isCleaning() const { return progress_.isCleaning; }
    [[nodiscard]] const QString& cleaningPath() const { return progress_.path; }
    [[nodiscard]] int cleaningDone() const { return progress_.done; }
    [[nodiscard]] int cleaningTotal() const { return progress_.total; }

    /// What came of the last clean.
    [[nodiscard]] const std::optional<CleanReport>& lastReport() const { return lastReport_; }
    [[nodiscard]] ReportFigures reportFigures() const { return ReportFigures::of(lastReport_); }
    /// Opens the sheet on what came of a clean.
    void show(const CleanReport& report);
    [[nodiscard]] bool showResult() const { return showResult_; }
    void setShowResult(bool show);

Q_SIGNALS:
    void progressChanged();
    void lastReportChanged();
    void showResultChanged();

private:
    AppModel& app_;
    Progress progress_;
    std::optional<CleanReport> lastReport_;
    bool showResult_ = false;
};

}  // namespace Brimlo
