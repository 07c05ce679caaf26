#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace Brimlo::Platform {

/// The status of an entry as the disk walks need it; symlinks are not followed.
struct EntryStatus {
    enum class Kind { directory, file, other };

    Kind kind = Kind::other;
    std::int64_t allocatedBytes = 0;
    std::int64_t length = 0;      ///< Apparent length, holes included.
    std::uint32_t linkCount = 0;  ///< Number of hard links.
    std::uint64_t device = 0;
    std::uint64_t fileID = 0;           ///< The inode number.
    std::chrono::sys_seconds modified;  ///< Whole seconds.
};

/// The status of the entry `path` below the folder open at `folder`; nullopt when it is missing or
/// unreadable. Triggers no automount.
[[nodiscard]] std::optional<EntryStatus> entryStatus(int folder, const char* path);

/// The same for an absolute path.
[[nodiscard]] std::optional<EntryStatus> entryStatus(const char* path);

}  // namespace Brimlo::Platform
