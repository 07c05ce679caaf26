#pragma once

#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/DiskScanner/FileNode.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class AppModel;

/// One item of a plan, or the many of one rule in one folder, described by its suggestion.
struct PlanLine {
    std::string path;
    std::string title;     ///< The name of the suggestion; the path if there is none.
    std::string subtitle;  ///< Empty if the title is the path.
    std::int64_t size = 0;
    std::int64_t itemCount = 0;  ///< Of a folder of many items; else 0.
    bool expanded = false;       ///< Whether the items of the folder follow.
    bool isInFolder = false;     ///< Whether it follows the row of its folder.

    bool operator==(const PlanLine&) const = default;

    /// Several rules may have many items in one folder.
    [[nodiscard]] std::string key() const { return itemCount > 0 ? path + '\0' + title : path; }
};

/// A plan that the user reviews before anything happens. What is confirmed is what was shown,
/// whatever was ticked or scanned in the meantime. Closed at first. Main thread.
class PlanReview : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY planChanged)
    Q_PROPERTY(double totalBytes READ totalBytes NOTIFY planChanged)
    Q_PROPERTY(double freedNow READ freedNow NOTIFY planChanged)
    Q_PROPERTY(double freedAfterEmptying READ freedAfterEmptying NOTIFY planChanged)
    Q_PROPERTY(bool hasFinalItems READ hasFinalItems NOTIFY planChanged)
    Q_PROPERTY(bool hasReviewItems READ hasReviewItems NOTIFY planChanged)

public:
    explicit PlanReview(AppModel& app);
    ~PlanReview() override;

    Q_DISABLE_COPY_MOVE(PlanReview)

    /// Opens with the items ticked in Smart Clean.
    Q_INVOKABLE void openSelection();
    /// Opens with nodes of the scanned tree, unless all are aggregates.
    void openNodes(std::vector<std::shared_ptr<FileNode>> nodes);
    /// Shows or hides the items of a folder; does nothing on another row.
    Q_INVOKABLE void toggleExpanded(int place);
    /// Forgets the plan.
    Q_INVOKABLE void close();
    /// Starts the clean, once, and closes. Does nothing while another clean is under way or if the
    /// plan is empty: the review stays open.
    Q_INVOKABLE void confirm();

    [[nodiscard]] bool isOpen() const { return isOpen_; }
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] double totalBytes() const;
    /// Bytes that are free at once: those of Docker's objects.
    [[nodiscard]] double freedNow() const;
    [[nodiscard]] double freedAfterEmptying() const { return totalBytes() - freedNow(); }
    [[nodiscard]] bool hasFinalItems() const { return plan_.hasFinalItems(); }
    /// Whether an item for the Trash may hold the user's own files: by its rating, or because it
    /// has none.
    [[nodiscard]] bool hasReviewItems() const;

Q_SIGNALS:
    void isOpenChanged();
    void planChanged();
    /// The clean was started. The review is closed already.
    void confirmed();

private:
    void open(CleanPlan plan, std::vector<std::shared_ptr<FileNode>> nodes);
    void setPlan(CleanPlan plan, std::vector<std::shared_ptr<FileNode>> nodes);
    void refresh();
    void setOpen(bool isOpen);

    AppModel& app_;
    Rows<PlanLine> rows_;
    CleanPlan plan_{{}};
    std::set<std::string> expanded_;  ///< The keys of folders.
    std::vector<std::shared_ptr<FileNode>>
        nodes_;  ///< The nodes of the plan; empty if it comes from Smart Clean.
    bool isOpen_ = false;
};

}  // namespace Brimlo
