#pragma once

#include "BrimloCore/DiskScanner/FileKind.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>

namespace Brimlo {

class FileNode;

/// Which files count. A file has to meet each condition.
struct FileFilter {
    std::int64_t minSize = 0;  ///< It takes at least so many bytes of the disk.
    std::set<FileKind> kinds;  ///< It is of one of these kinds; of any kind if there are none.
    std::optional<std::chrono::sys_seconds> before;  ///< It was last modified before this moment.

    bool operator==(const FileFilter&) const = default;

    /// Whether a file counts that has this name and takes so many bytes of the disk.
    [[nodiscard]] bool takes(
        std::string_view name,
        std::int64_t allocatedBytes,
        std::chrono::sys_seconds modified) const;
    /// Whether this file counts, or one below this folder. Of an aggregate only the age is known,
    /// so it counts only where nothing else is asked for. Takes as long as it is to the first such
    /// file, the largest folders first.
    [[nodiscard]] bool takesAnyOf(const FileNode& node) const;

    /// The moment so many days before now, for `before`; in 1970 at the earliest.
    [[nodiscard]] static std::chrono::sys_seconds daysAgo(std::int64_t days);
};

}  // namespace Brimlo
