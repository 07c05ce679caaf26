#pragma once

#include "BrimloApp/Review/PlanGroup.h"
#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Models/Suggestion.h"

#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class AppModel;

/// A plan that the user reviews before anything happens. It opens once the gate has judged the
/// items, so that nothing moves in it. What is confirmed is what is ticked in it, whatever was
/// ticked or scanned elsewhere in the meantime. Closed at first. Main thread; judges in the
/// background.
class PlanReview : public Brimlo::RowList {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")

    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    // Of what is ticked.
    Q_PROPERTY(int itemCount READ itemCount NOTIFY figuresChanged)
    Q_PROPERTY(double freedNow READ freedNow NOTIFY figuresChanged)
    Q_PROPERTY(double trashBytes READ trashBytes NOTIFY figuresChanged)
    Q_PROPERTY(double freedAfterEmptying READ freedAfterEmptying NOTIFY figuresChanged)
    Q_PROPERTY(QString amount READ amount NOTIFY figuresChanged)
    Q_PROPERTY(QString warning READ warning NOTIFY figuresChanged)
    // Of the plan as it opened.
    Q_PROPERTY(bool hasTrashItems READ hasTrashItems NOTIFY planChanged)
    Q_PROPERTY(bool hasFinalItems READ hasFinalItems NOTIFY planChanged)
    Q_PROPERTY(bool hasReviewItems READ hasReviewItems NOTIFY planChanged)
    Q_PROPERTY(int stayingCount READ stayingCount NOTIFY planChanged)

public:
    explicit PlanReview(AppModel& app);
    ~PlanReview() override;

    Q_DISABLE_COPY_MOVE(PlanReview)

    /// Opens with the items ticked in Smart Clean, once they are judged.
    Q_INVOKABLE void openSelection();
    /// Opens with nodes of the scanned tree, unless all are aggregates.
    void openNodes(std::vector<std::shared_ptr<FileNode>> nodes);
    /// Opens with the plan that `planning` makes, in the background.
    void openPlan(std::function<CleanPlan()> planning);
    /// Opens at once with the plan that is being judged, as if `rehearsal` were its dry run;
    /// does nothing without one.
    void show(const CleanReport& rehearsal);
    /// Ticks or unticks an item, or all of a folder; does nothing on what stays.
    Q_INVOKABLE void toggle(int place);
    /// Shows or hides the items of a folder; does nothing on another row.
    Q_INVOKABLE void toggleExpanded(int place);
    /// Forgets the plan.
    Q_INVOKABLE void close();
    /// Starts the clean of what is ticked, once, and closes. Does nothing while another clean is
    /// under way or if nothing is ticked: the review stays open.
    Q_INVOKABLE void confirm();

    [[nodiscard]] bool isOpen() const { return isOpen_; }
    [[nodiscard]] int itemCount() const { return static_cast<int>(figures_.count); }
    /// Bytes that are free at once: those of Docker's objects.
    [[nodiscard]] double freedNow() const { return static_cast<double>(figures_.finalBytes); }
    [[nodiscard]] double trashBytes() const { return static_cast<double>(figures_.trashBytes()); }
    /// At least.
    [[nodiscard]] double freedAfterEmptying() const {
        return static_cast<double>(figures_.freedFromTrash());
    }
    /// As `CleanFigures` words them.
    [[nodiscard]] QString amount() const;
    [[nodiscard]] QString warning() const;

    [[nodiscard]] bool hasTrashItems() const { return has(PlanLine::Fate::trash); }
    [[nodiscard]] bool hasFinalItems() const { return has(PlanLine::Fate::forGood); }
    /// Whether an item for the Trash may hold the user's own files: by its rating, or because it
    /// has none.
    [[nodiscard]] bool hasReviewItems() const;
    /// How many items would be refused.
    [[nodiscard]] int stayingCount() const;

Q_SIGNALS:
    void isOpenChanged();
    void planChanged();
    void figuresChanged();
    /// The clean was started. The review is closed already.
    void confirmed();

private:
    /// Makes the plan from the suggestions, in the background: that takes its time for thousands of
    /// items.
    using Planning = std::function<CleanPlan(const std::vector<Suggestion>&)>;
    void open(Planning planning, std::vector<std::shared_ptr<FileNode>> nodes);
    void show(CleanPlan plan, std::vector<PlanGroup> groups);
    void forget();
    void refresh();
    void setOpen(bool isOpen);
    void tick(PlanGroup& group, std::size_t item, bool isTicked);
    [[nodiscard]] QString tickWord(const PlanLine& row) const;
    [[nodiscard]] bool has(PlanLine::Fate fate) const;
    [[nodiscard]] std::set<std::string> unticked() const;

    AppModel& app_;
    Rows<PlanLine> rows_;
    CleanPlan plan_{{}};
    Planning planning_;
    std::vector<PlanGroup> groups_;  ///< By fate, then the largest first.
    CleanFigures figures_;
    std::set<std::string> expanded_;  ///< The keys of folders.
    std::vector<std::shared_ptr<FileNode>>
        nodes_;  ///< The nodes of the plan; empty if it was not made from nodes.
    /// Of the judging under way; false once it is outdated.
    std::shared_ptr<bool> isWanted_ = std::make_shared<bool>(false);
    bool isOpen_ = false;
};

}  // namespace Brimlo
