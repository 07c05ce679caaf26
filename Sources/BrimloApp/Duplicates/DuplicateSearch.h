#pragma once

#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloApp/Shell/Rows.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CopyChoice.h"
#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/Cleaner/EqualFolders.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantList>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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
    // What is searched besides the root, and the length that counts.
    Q_PROPERTY(QStringList otherFolders READ otherFolders NOTIFY searchedChanged)
    Q_PROPERTY(double minSize READ minSize WRITE setMinSize NOTIFY searchedChanged)
    // The sets of equal folders, the largest first: {bytes, files, folders}.
    Q_PROPERTY(QVariantList equalFolders READ equalFolders NOTIFY groupsChanged)
    // Only groups with such a path or name, and of the kind with this index, are shown; 0 for all.
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY filterChanged)
    Q_PROPERTY(int kind READ kind WRITE setKind NOTIFY filterChanged)
    // What the last search left out; empty for nothing.
    Q_PROPERTY(QString leftOut READ leftOut NOTIFY groupsChanged)
    // Which copy of each group stays: the index of a rule, and the folders that lose none.
    Q_PROPERTY(int rule READ rule WRITE setRule NOTIFY choiceChanged)
    Q_PROPERTY(QStringList keptFolders READ keptFolders NOTIFY choiceChanged)

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
    /// `folders` are the equal ones among the groups.
    void setGroups(Groups groups, std::vector<EqualFolders> folders = {});

    [[nodiscard]] const QString& query() const { return query_; }
    void setQuery(const QString& query);
    [[nodiscard]] int kind() const { return kind_; }
    void setKind(int kind);
    /// Whether each group is shown.
    [[nodiscard]] std::vector<bool> areShown() const;
    [[nodiscard]] QString leftOut() const;
    /// Why a group can't be replaced by clones; empty if it may.
    [[nodiscard]] std::string cloneRefusal(const Uuid& group) const;

    [[nodiscard]] QVariantList equalFolders() const;
    [[nodiscard]] QStringList otherFolders() const;
    /// Searches one more folder next time; one that is searched anyway adds nothing.
    Q_INVOKABLE void addFolder(const QString& folder);
    Q_INVOKABLE void removeFolder(const QString& folder);
    /// The least length of the files compared, in bytes.
    [[nodiscard]] double minSize() const { return static_cast<double>(minSize_); }
    void setMinSize(double bytes);

    /// Why each copy stays, for each group in order; absent for an extra.
    [[nodiscard]] const std::vector<CopyChoice::Reasons>& reasons() const { return reasons_; }
    [[nodiscard]] int rule() const { return static_cast<int>(choice_.rule()); }
    void setRule(int rule);
    [[nodiscard]] QStringList keptFolders() const;
    /// Keeps every copy in a folder; shows a message when it is gone.
    void keepUnder(const std::string& folder);
    Q_INVOKABLE void keepFolder(const QString& folder) { keepUnder(toPath(folder)); }
    /// Forgets a kept folder.
    Q_INVOKABLE void release(const QString& folder);
    /// Keeps this copy, by the places of its group and in it.
    void keep(std::size_t group, std::size_t copy);
    /// Opens the review of the extras of all groups that are shown.
    Q_INVOKABLE void reviewExtras();

    /// Replaces the extras of a group with clones. Takes `busy`. The group is removed from the
    /// list, whatever the outcome.
    void clone(const DuplicateGroup& group);
    /// Moves the extras of a group to the Trash; the group is removed from the list, whatever the
    /// outcome.
    void trash(const DuplicateGroup& group);
    /// Removes the items of a plan, which are gone, from their groups, and groups of which fewer
    /// than two files remain.
    void forget(const CleanPlan& gone);

Q_SIGNALS:
    void groupsChanged();
    /// What the next search is about changed.
    void searchedChanged();
    /// What is shown of the groups changed.
    void filterChanged();
    /// The choice of copies changed, and with it the reasons.
    void choiceChanged();

private:
    void chooseAnew();
    [[nodiscard]] std::vector<std::string> folders() const override;
    void start(std::shared_ptr<ScanControl> control) override;
    void remove(const Uuid& id);
    [[nodiscard]] std::vector<EqualFolders> foldersWithout(
        const std::vector<std::string>& changed) const;

    using Refusals = std::unordered_map<Uuid, std::string>;

    std::vector<std::string> otherFolders_;
    std::int64_t minSize_ = 1'048'576;
    Groups groups_;
    std::vector<EqualFolders> equalFolders_;
    DuplicateFinder::LeftOut leftOut_;
    QString query_;
    int kind_ = 0;
    CopyChoice choice_;
    std::vector<CopyChoice::Reasons> reasons_;  ///< Of the groups.
    Refusals refusals_;                         ///< Of the groups without clones.
    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<DuplicateRows> rows_;
};

}  // namespace Brimlo
