#pragma once

#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloApp/Shell/Rows.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Brimlo {

class DuplicateRows;
class PlanReview;

/// The search for equal files, and the actions on the groups found. Main thread.
class DuplicateSearch : public Brimlo::FolderSearch {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/Duplicates/DuplicateRows.h")
    Q_MOC_INCLUDE("BrimloApp/Review/PlanReview.h")

    Q_PROPERTY(Brimlo::DuplicateRows* rows READ rows CONSTANT)
    Q_PROPERTY(Brimlo::PlanReview* review READ review CONSTANT)

public:
    using Groups = std::vector<DuplicateGroup>;

    explicit DuplicateSearch(AppModel& app);
    ~DuplicateSearch() override;

    Q_DISABLE_COPY_MOVE(DuplicateSearch)

    [[nodiscard]] DuplicateRows* rows() const { return rows_.get(); }
    [[nodiscard]] PlanReview* review() const { return review_.get(); }
    using FolderSearch::app;
    /// The most wasted bytes first.
    [[nodiscard]] const Groups& groups() const { return groups_; }
    void setGroups(Groups groups);
    /// Why a group can't be replaced by clones; empty if it may.
    [[nodiscard]] std::string cloneRefusal(const Uuid& group) const;

    /// Replaces all files of a group but the first with clones of it. Takes `busy`. The group is
    /// removed from the list, whatever the outcome.
    void clone(const DuplicateGroup& group);
    /// Moves all files of a group but the first to the Trash; the group is removed from the list,
    /// whatever the outcome.
    void trash(const DuplicateGroup& group);
    /// Removes deleted files from their groups, and groups of which fewer than two files remain.
    void forget(const std::set<std::string>& paths);

Q_SIGNALS:
    void groupsChanged();

private:
    void start(std::shared_ptr<ScanControl> control) override;
    void remove(const Uuid& id);

    using Refusals = std::unordered_map<Uuid, std::string>;

    Groups groups_;
    Refusals refusals_;  ///< Of the groups without clones.
    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<DuplicateRows> rows_;
};

}  // namespace Brimlo
