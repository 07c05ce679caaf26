#pragma once

#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloCore/DiskScanner/FileNode.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class LargeFileRows;

/// The search for the largest files. Main thread.
class LargeFileSearch : public Brimlo::FolderSearch {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/LargeFiles/LargeFileRows.h")

    Q_PROPERTY(Brimlo::LargeFileRows* rows READ rows CONSTANT)

public:
    using Files = std::vector<std::shared_ptr<FileNode>>;

    explicit LargeFileSearch(AppModel& app);
    ~LargeFileSearch() override;

    Q_DISABLE_COPY_MOVE(LargeFileSearch)

    [[nodiscard]] LargeFileRows* rows() const { return rows_.get(); }
    /// The files found, the largest first.
    [[nodiscard]] const Files& files() const { return files_; }
    void setFiles(Files files);

    /// Moves a file to the Trash, and then removes it from the list.
    void trash(const std::shared_ptr<FileNode>& file);
    void reveal(const std::string& path);
    /// Removes deleted files from the list, and from the result of the search under way.
    void forget(const std::set<std::string>& paths);

Q_SIGNALS:
    void filesChanged();

private:
    void start(std::shared_ptr<ScanControl> control) override;
    void removeFiles(const std::set<std::string>& paths);

    Files files_;
    std::set<std::string> wentMeanwhile_;  ///< Paths deleted since the search began.
    const std::unique_ptr<LargeFileRows> rows_;
};

}  // namespace Brimlo
