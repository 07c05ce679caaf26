#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace Brimlo::Platform {

/// What the walks over a disk want to know of an entry; a link is not followed.
struct EntryStatus {
    enum class Kind { directory, file, other };

    Kind kind = Kind::other;
    std::int64_t allocatedBytes = 0;
    std::int64_t length = 0;      ///< Bytes from the first to the last, holes included.
    std::uint32_t linkCount = 0;  ///< Names of the same file.
    std::uint64_t device = 0;
    std::uint64_t fileID = 0;           ///< The inode number.
    std::chrono::sys_seconds modified;  ///< Fractions of a second are dropped.
};

/// The status of the entry `path` below the folder open at `folder`; nullopt when there is none or
/// it can't be looked at. Starts no automatic mount.
[[nodiscard]] std::optional<EntryStatus> entryStatus(int folder, const char* path);

/// The same for a path of its own.
[[nodiscard]] std::optional<EntryStatus> entryStatus(const char* path);

}  // namespace Brimlo::Platform
