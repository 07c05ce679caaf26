#pragma once

#include "BrimloCore/Cleaner/DuplicateFinder.h"
#include "BrimloCore/DiskScanner/ScanControl.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// Folders of the same contents, as of when they were read, or one that a larger folder holds all
/// of.
struct EqualFolders {
    std::int64_t bytes = 0;            ///< The lengths of the files in each, added up.
    std::int64_t files = 0;            ///< In each, however deep.
    std::vector<std::string> folders;  ///< Sorted; one if there are larger ones.
    std::vector<std::string> larger;   ///< Folders that hold the same and more, sorted.

    bool operator==(const EqualFolders&) const = default;

    /// The sets of equal folders with two or more files that hold the groups found in a search
    /// below `roots` for files of at least `minSize` bytes; the most bytes first, then by first
    /// path.
    ///
    /// Two folders are equal if the same names lie at the same places below them: folders, files of
    /// the same bytes, and symlinks with the same target. Files that the search left out because
    /// they are short are compared here, byte by byte. A folder with anything else in it is equal
    /// to none: what can't be read, a further name of a file, a device. A larger folder holds all
    /// of another at the same places; where that may be is looked up by the file with the fewest
    /// copies, and not at all when it has more than 64. What lies in told folders is not told
    /// again, unless a folder outside equals it. Cancelled, the result is what was finished by
    /// then. Blocks; one thread.
    [[nodiscard]] static std::vector<EqualFolders> among(
        const std::vector<DuplicateGroup>& groups,
        const std::vector<std::string>& roots,
        std::int64_t minSize,
        ScanControl* control = nullptr);
};

}  // namespace Brimlo
