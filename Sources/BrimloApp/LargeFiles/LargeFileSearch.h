#pragma once

#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Brimlo {

class LargeFileRows;
class PlanReview;

/// The search for the largest files. Main thread.
class LargeFileSearch : public Brimlo::FolderSearch {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/LargeFiles/LargeFileRows.h")
    Q_MOC_INCLUDE("BrimloApp/Review/PlanReview.h")

    Q_PROPERTY(Brimlo::LargeFileRows* rows READ rows CONSTANT)
    Q_PROPERTY(Brimlo::PlanReview* review READ review CONSTANT)
    Q_PROPERTY(int kinds READ kinds WRITE setKinds NOTIFY filterChanged)
    Q_PROPERTY(int olderThan READ olderThan WRITE setOlderThan NOTIFY filterChanged)
    Q_PROPERTY(double minSize READ minSize WRITE setMinSize NOTIFY filterChanged)
    Q_PROPERTY(bool isFiltered READ isFiltered NOTIFY filterChanged)

public:
    using Files = std::vector<std::shared_ptr<FileNode>>;

    explicit LargeFileSearch(AppModel& app);
    ~LargeFileSearch() override;

    Q_DISABLE_COPY_MOVE(LargeFileSearch)

    [[nodiscard]] LargeFileRows* rows() const { return rows_.get(); }
    [[nodiscard]] PlanReview* review() const { return review_.get(); }
    using FolderSearch::app;
    /// The files found, the largest first.
    [[nodiscard]] const Files& files() const { return files_; }
    void setFiles(Files files);
    /// What of a listed file may stay when it goes; null if nothing.
    [[nodiscard]] SharedFiles sharedOf(const std::string& path) const;

    // Another value searches again if there was a search.

    /// The kinds that count, a bit for each index of `FileKinds`; 0 for all kinds.
    [[nodiscard]] int kinds() const { return choice_.kinds; }
    void setKinds(int kinds);
    /// Only files not modified for so many days; 0 for any age.
    [[nodiscard]] int olderThan() const { return choice_.olderThan; }
    void setOlderThan(int days);
    /// Only files that take at least so many bytes.
    [[nodiscard]] double minSize() const { return static_cast<double>(choice_.minSize); }
    void setMinSize(double bytes);
    [[nodiscard]] bool isFiltered() const { return choice_ != Choice{}; }

    /// Moves a file to the Trash, and then removes it from the list.
    void trash(const std::shared_ptr<FileNode>& file);
    /// Removes deleted files from the list, and from the result of the search under way.
    void forget(const std::set<std::string>& paths);

Q_SIGNALS:
    void filesChanged();
    void filterChanged();

private:
    /// What the user wants to find, as the window shows it.
    struct Choice {
        int kinds = 0;
        int olderThan = 0;
        std::int64_t minSize = 52'428'800;

        bool operator==(const Choice&) const = default;

        [[nodiscard]] LargeFiles::Filter filter() const;
    };
    void choose(Choice choice);

    using Shared = std::unordered_map<std::string, SharedFiles>;  ///< By path; none is null.
    void start(std::shared_ptr<ScanControl> control) override;
    void removeFiles(const std::set<std::string>& paths);

    Files files_;
    Shared shared_;
    Choice choice_;
    std::set<std::string> wentMeanwhile_;  ///< Paths deleted since the search began.
    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<LargeFileRows> rows_;
};

}  // namespace Brimlo
