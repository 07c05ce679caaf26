#pragma once

#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloCore/DiskScanner/FileNode.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class LargeFileRows;

/// The search for the largest files.
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
    /// What was found, the largest first.
    [[nodiscard]] const Files& files() const { return files_; }
    void setFiles(Files files);

    /// Moves a file to the Trash; its row goes when the file went.
    void trash(const std::shared_ptr<FileNode>& file);
    void reveal(const std::string& path);
    /// Takes what went off the list, and off that of the search under way.
    void forget(const std::set<std::string>& paths);

Q_SIGNALS:
    void filesChanged();

private:
    void start(std::shared_ptr<ScanControl> control) override;
    void takeOff(const std::set<std::string>& paths);

    Files files_;
    std::set<std::string> wentMeanwhile_;  ///< Since the search under way began.
    const std::unique_ptr<LargeFileRows> rows_;
};

}  // namespace Brimlo
