#pragma once

#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/LinkedFiles.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/ScanOptions.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Brimlo {

/// The walks that measure what lies on a disk. An object is made for one scan.
class DiskScanner {
public:
    DiskScanner(std::shared_ptr<ScanControl> control, const ScanOptions& options);

    /// The tree below `root`, with the allocated bytes of all there is: folders' own blocks, hard
    /// links once, links as themselves. In a crowded folder what is small is merged into one node.
    ///
    /// Null when `root`, which may be in any form and a link, is no folder that can be opened.
    /// Other volumes are told to the control and not entered; that of `root` is the one the folder
    /// itself lies on. A folder that can't be read is an empty one and is told to the control, as
    /// is each folder once its entries are read. Cancelled, it comes back soon with the tree so
    /// far. Several threads work; blocks until all are done.
    [[nodiscard]] std::shared_ptr<FileNode> scan(const std::string& root);

    /// The bytes that a path takes; 0 when nothing is there or can be read. An estimate: the
    /// folders' own blocks are left out, and a mount inside is measured too. A hard-linked file
    /// counts once, a link as itself. Blocks; keeps no state, so that many run at once.
    [[nodiscard]] static std::int64_t quickSize(const std::string& path);

    /// The fast walk of a directory; nullopt when it can't be read that way at all.
    [[nodiscard]] static std::optional<std::int64_t> bulkSize(const std::string& path);

    /// The plain walk: counts the folders' own blocks and stays on the device.
    [[nodiscard]] static std::int64_t legacyQuickSize(const std::string& path);

private:
    std::shared_ptr<ScanControl> control_;
    ScanOptions options_;
    LinkedFiles linkedFiles_;  ///< Of this scan.
};

}  // namespace Brimlo
