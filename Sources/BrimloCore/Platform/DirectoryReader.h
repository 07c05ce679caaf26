#pragma once

#include <cstdint>
#include <functional>

namespace Brimlo::Platform {

/// One entry of a directory. "." and ".." are never among them.
struct DirectoryEntry {
    const char* name = "";            ///< NUL-terminated; valid during the call that hands it out.
    bool isDirectory = false;         ///< False for a link to a directory.
    std::int64_t allocatedBytes = 0;  ///< Of anything but a directory, when asked for.
    std::uint32_t linkCount = 0;      ///< Likewise.
    std::uint64_t fileID = 0;         ///< The inode number; likewise.
};

/// What is read of each entry: asking for more than names and kinds costs a look at each file.
enum class EntryDetail { kind, allocation };

/// Hands out the entries of the directory open at `descriptor`, in its own order, and returns
/// whether it could be read to its end. An entry that vanishes meanwhile is left out.
///
/// `visit` must not read another directory: the buffer is the thread's.
bool readDirectory(
    int descriptor, EntryDetail detail, const std::function<void(const DirectoryEntry&)>& visit);

}  // namespace Brimlo::Platform
