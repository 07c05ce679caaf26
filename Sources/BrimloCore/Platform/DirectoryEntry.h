#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace Brimlo::Platform {

/// One entry of a directory. "." and ".." are never among them.
struct DirectoryEntry {
    const char* name = "";            ///< NUL-terminated; valid during the callback.
    bool isDirectory = false;         ///< False for a symlink to a directory.
    std::int64_t allocatedBytes = 0;  ///< Of entries other than directories, when requested.
    std::int64_t length = 0;          ///< Likewise, holes included; 0 where the system tells less.
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

/// The unit of the blocks that stat(2) counts, whatever the file system's own is.
inline constexpr std::int64_t kBlockBytes = 512;

/// The status of an entry as the disk walks need it; symlinks are not followed.
struct EntryStatus {
    enum class Kind { directory, file, other };

    Kind kind = Kind::other;
    std::int64_t allocatedBytes = 0;
    std::int64_t length = 0;      ///< Apparent length, holes included.
    std::uint32_t linkCount = 0;  ///< Number of hard links.
    FileIdentity identity;
    std::chrono::sys_seconds modified;  ///< Whole seconds.
    std::uint64_t mount = 0;            ///< The id of its mount; 0 when unknown.
};

/// The status of the entry `path` below the folder open at `folder`; nullopt when it is missing or
/// unreadable. Triggers no automount.
[[nodiscard]] std::optional<EntryStatus> entryStatus(int folder, const char* path);

/// The same for an absolute path.
[[nodiscard]] std::optional<EntryStatus> entryStatus(const char* path);

}  // namespace Brimlo::Platform
