#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <expected>
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

/// Finds files of the same content and lets them share their bytes on the disk.
namespace DuplicateFinder {

/// Told the path of a file that is about to be read in full.
using Progress = std::function<void(const std::string& path)>;

/// The groups of equal files of at least `minSize` bytes below the folders `roots`, the most wasted
/// bytes first, then by first path.
///
/// Names of one file count as one. Not entered are folders called "Library", those of a Trash, and
/// those whose name ends in ".photoslibrary" or ".app"; other volumes are. What can't be read is
/// left out, and so are empty files. The control may be null; cancelled while folders are still
/// being walked, the answer is empty, and later it is ignored. Blocks; one thread; reads whole
/// files only where length, beginning and end agree.
[[nodiscard]] std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    const ScanControl* control = nullptr,
    const Progress& progress = {});

/// Whether both files can be read to their ends and hold the same bytes now. For what was found
/// some time ago. Blocks; reads both.
[[nodiscard]] bool areEqual(const std::string& first, const std::string& second);

/// Puts a clone of `original` in the place of `duplicate`, with the times and the mode of the
/// latter. Trusts that both hold the same bytes.
///
/// At every moment the whole old or the whole new file is at `duplicate`; on failure the old one.
/// The clone is made beside it, under its name with ".brimlo-clone" behind; what is there already
/// stays and makes this fail. Fails, too, where `Platform::cloneFile` does.
[[nodiscard]] std::expected<void, Error> replaceWithClone(
    const std::string& original, const std::string& duplicate);

}  // namespace DuplicateFinder

}  // namespace Brimlo
