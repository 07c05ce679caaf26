#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Brimlo {

/// Distinct files on disk with the same content, as of when they were read.
struct DuplicateGroup {
    Uuid id = Uuid::random();
    std::int64_t size = 0;           ///< The length of each in bytes, not its allocated size.
    std::vector<std::string> paths;  ///< Two or more, sorted; the first is the one to keep.

    bool operator==(const DuplicateGroup&) const = default;

    /// The bytes that would be freed if only one of the files stayed.
    [[nodiscard]] std::int64_t wastedBytes() const;
};

/// Finds files of the same content.
namespace DuplicateFinder {

/// Called with the path of a file that is about to be read in full.
using Progress = std::function<void(const std::string& path)>;

/// The groups of equal files of at least `minSize` bytes below the folders `roots`, the most wasted
/// bytes first, then by first path.
///
/// Hard links of one file count as one, and so do clones that share every byte, where the system
/// can tell (`Platform::sharedExtents`): deleting one of them would free nothing. Folders called
/// "Library", a Trash, and folders ending in ".photoslibrary" or ".app" are not entered; other
/// volumes are. Unreadable and empty files are left out; `control`, which may be null, is told of
/// unreadable folders. Cancelled at any stage, the result is empty. Blocks; one thread; reads whole
/// files only when length, beginning and end agree.
[[nodiscard]] std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control = nullptr,
    const Progress& progress = {});

}  // namespace DuplicateFinder

}  // namespace Brimlo
