#pragma once

#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/WorkCrew.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Brimlo {

/// The walk of one scan.
///
/// One job reads a folder: its names first, then their status, for which a folder with many names
/// has several jobs. Then each subfolder has a job, and the job that finishes the last of them
/// gives the folder's node its children. So nothing recurses, and the small entries of a crowded
/// folder never get a node.
class TreeScan {
public:
    TreeScan(ScanControl& control, const ScanOptions& options, LinkedFiles& linkedFiles);

    /// The tree below `root`; null when that is not a folder that can be opened.
    [[nodiscard]] std::shared_ptr<FileNode> run(const std::string& root);

private:
    struct Entry;
    struct Folder;
    struct Batch;

    struct Job {
        enum class Kind { readRoot, enterSubfolder, lookAtBatch };
        Kind kind = Kind::readRoot;
        Folder* folder = nullptr;
        std::size_t index = 0;
    };
    using Crew = WorkCrew<Job>;

    void work(const Job& job, Crew::Member& member);
    void enter(Folder& parent, std::size_t slot, Crew::Member& member);
    void read(Folder& folder, Crew::Member& member);
    [[nodiscard]] Batch lookAt(const Folder& folder, std::size_t from, std::size_t to);
    void entriesRead(Folder& folder, Crew::Member& member);
    void makeNodes(Folder& folder, bool areFew);
    void finish(Folder& finished);
    void complete(Folder& folder);

    ScanControl& control_;
    const ScanOptions options_;
    LinkedFiles& linkedFiles_;
    std::uint64_t device_ = 0;
    std::shared_ptr<FileTree> tree_ = std::make_shared<FileTree>();
};

}  // namespace Brimlo
