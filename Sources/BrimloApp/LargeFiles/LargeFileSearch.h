#pragma once

#include "BrimloApp/Shell/FileChoice.h"
#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/Models/Suggestion.h"

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
    Q_PROPERTY(Brimlo::FileChoice* choice READ choice CONSTANT)

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

    /// Which files are searched for. Another choice searches again if there was a search.
    [[nodiscard]] FileChoice* choice() { return &choice_; }

    /// Moves a file to the Trash, and then removes it from the list.
    void trash(const std::shared_ptr<FileNode>& file);
    /// Removes deleted files from the list, and from the result of the search under way.
    void forget(const std::set<std::string>& paths);

Q_SIGNALS:
    void filesChanged();

private:
    using Shared = std::unordered_map<std::string, SharedFiles>;  ///< By path; none is null.
    void start(std::shared_ptr<ScanControl> control) override;
    void removeFiles(const std::set<std::string>& paths);

    Files files_;
    Shared shared_;
    FileChoice choice_{52'428'800};
    std::set<std::string> wentMeanwhile_;  ///< Paths deleted since the search began.
    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<LargeFileRows> rows_;
};

}  // namespace Brimlo
