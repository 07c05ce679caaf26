#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Which blocks of a file others share, so that deleting the file frees less than it takes.
namespace Brimlo::Platform {

/// A contiguous piece of a volume, in bytes.
struct BlockRange {
    std::uint64_t device = 0;
    std::uint64_t start = 0;
    std::uint64_t end = 0;  ///< The byte behind the last one.

    auto operator<=>(const BlockRange&) const = default;
};

/// The allocated bytes of files that may stay taken when the files go.
struct UnsureBlocks {
    std::int64_t bytes = 0;          ///< All of them; a range that two files share counts twice.
    std::int64_t unplaced = 0;       ///< Of these, what may be freed and has no known place.
    std::vector<BlockRange> ranges;  ///< The places of the others.

    bool operator==(const UnsureBlocks&) const = default;
};

/// What the file system of a folder may do with the blocks of files.
struct BlockSharing {
    bool isPossible = false;  ///< Whether files can share blocks, and `unsureBlocks` can tell.
    /// A file up to this length may lie among the names, where it takes no block of its own.
    std::int64_t inlineLength = 0;
};

/// The same, of an open folder.
[[nodiscard]] BlockSharing blockSharing(int folder);

/// Of the file system of a path; nothing is possible where nothing is there.
[[nodiscard]] BlockSharing blockSharing(const std::string& path);

/// What may stay of the file `name`, in an open folder or an absolute path: blocks that other files
/// or snapshots share, compressed ones, whose true size an ordinary user can't ask for, and all
/// blocks of a file that can't be opened. `name` has blocks, so it is a file or a symlink;
/// a symlink shares none. Takes about as long as
/// opening the file.
[[nodiscard]] UnsureBlocks unsureBlocks(int folder, const char* name, std::int64_t allocatedBytes);

/// An extent: a contiguous piece of a file on disk.
struct Extent {
    std::uint64_t offset = 0;    ///< In the file.
    std::uint64_t position = 0;  ///< On the volume.
    std::uint64_t length = 0;

    bool operator==(const Extent&) const = default;
    auto operator<=>(const Extent&) const = default;
};

/// The extents of an open file, if other files share every byte of it. Two files of one volume with
/// the same extents are clones of each other. Nullopt when a part is not shared, when the system
/// can't tell, and for a file without data on disk.
[[nodiscard]] std::optional<std::vector<Extent>> sharedExtents(int file);

}  // namespace Brimlo::Platform
