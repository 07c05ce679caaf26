#pragma once

#include <cstdint>
#include <functional>

namespace Brimlo::Platform {

/// One entry of a directory. "." and ".." are never among them.
struct DirectoryEntry {
    const char* name = "";            ///< NUL-terminated; valid during the callback.
    bool isDirectory = false;         ///< False for a symlink to a directory.
    std::int64_t allocatedBytes = 0;  ///< Of entries other than directories, when requested.
    std::uint32_t linkCount = 0;      ///< Likewise.
    std::uint64_t inode = 0;          ///< Likewise.
};

/// What to read of each entry: more than names and kinds costs a status call per file.
enum class EntryDetail { kind, allocation };

/// Passes on the entries of the directory open at `descriptor`, in its own order, and returns
/// whether it could be read to its end. An entry that vanishes meanwhile is left out.
///
/// `visit` must not read another directory: the buffer is shared by the thread.
bool readDirectory(
    int descriptor, EntryDetail detail, const std::function<void(const DirectoryEntry&)>& visit);

}  // namespace Brimlo::Platform
