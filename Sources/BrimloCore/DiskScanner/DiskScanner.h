#pragma once

#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/FreedSpace.h"
#include "BrimloCore/DiskScanner/ScanControl.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace Brimlo {

/// The trade-off between detail and memory in a scan.
struct ScanOptions {
    std::int64_t keepThreshold = 1'048'576;  ///< Smaller children may be merged, in bytes.
    std::int64_t alwaysKeepBelowCount = 40;  ///< Up to this many children none is merged.
    bool crossDevices = false;               ///< Whether directories on other devices are entered.
    std::int64_t parallelDepth = 3;          ///< Directories above it are split among threads.

    bool operator==(const ScanOptions&) const = default;
};

/// Walks that measure disk usage. One object serves one scan.
class DiskScanner {
public:
    DiskScanner(std::shared_ptr<ScanControl> control, const ScanOptions& options);

    /// The tree below `root` with allocated bytes: folders include their own blocks, a hard-linked
    /// file counts once, a symlink as itself. In a crowded folder small entries are merged into one
    /// node.
    ///
    /// Null when `root`, which may be in any form and a symlink, is not a folder that can be
    /// opened. Other volumes are reported to the control and not entered; the root's volume is the
    /// one the folder itself is on. An unreadable folder is empty and reported to the control, as
    /// is each folder once its entries are read. Cancelled, it returns soon with the tree so far.
    /// Uses several threads; blocks until all are done.
    [[nodiscard]] std::shared_ptr<FileNode> scan(const std::string& root);

    /// The space of a path; none when nothing is there or readable. An estimate: the folders' own
    /// blocks are left out, and mounts inside are measured too. A hard-linked file counts once, a
    /// symlink as itself. Blocks; keeps no state, so many can run at once.
    [[nodiscard]] static SpaceUse spaceUse(const std::string& path);

    /// The bytes of `spaceUse`.
    [[nodiscard]] static std::int64_t quickSize(const std::string& path) {
        return spaceUse(path).size;
    }

    /// The fast walk of a directory; nullopt when the directory can't be read that way.
    [[nodiscard]] static std::optional<SpaceUse> bulkSize(const std::string& path);

    /// The plain walk: includes the folders' own blocks and stays on the device.
    [[nodiscard]] static SpaceUse legacyQuickSize(const std::string& path);

private:
    std::shared_ptr<ScanControl> control_;
    ScanOptions options_;
    LinkedFiles linkedFiles_;  ///< Of this scan.
};

}  // namespace Brimlo
