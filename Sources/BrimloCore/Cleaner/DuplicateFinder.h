#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Brimlo {

/// Files that are different ones on the disk and hold the same bytes, as of when they were read.
struct DuplicateGroup {
    Uuid id = Uuid::random();
    std::int64_t size = 0;  ///< The length of each in bytes, not what it takes on the disk.
    std::vector<std::string> paths;  ///< Two or more, sorted; the first is the one to keep.

    bool operator==(const DuplicateGroup&) const = default;

    /// The bytes that would come back if one of the files stayed.
    [[nodiscard]] std::int64_t wastedBytes() const;
};

/// Finds files of the same content.
namespace DuplicateFinder {

/// Told the path of a file that is about to be read in full.
using Progress = std::function<void(const std::string& path)>;

/// The groups of equal files of at least `minSize` bytes below the folders `roots`, the most wasted
/// bytes first, then by first path.
///
/// Names of one file count as one, and so do clones that share every byte, where the system can
/// tell (`Platform::sharedExtents`): one of them going would give nothing back. Not entered are
/// folders called "Library", those of a Trash, and those whose name ends in ".photoslibrary" or
/// ".app"; other volumes are. What can't be read is left out, and so are empty files; `control`,
/// which may be null, is told of the folders. Cancelled at any stage, the answer is empty. Blocks;
/// one thread; reads whole files only where length, beginning and end agree.
[[nodiscard]] std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control = nullptr,
    const Progress& progress = {});

}  // namespace DuplicateFinder

}  // namespace Brimlo
