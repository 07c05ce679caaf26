#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace Brimlo::Platform {

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
};

/// The status of the entry `path` below the folder open at `folder`; nullopt when it is missing or
/// unreadable. Triggers no automount.
[[nodiscard]] std::optional<EntryStatus> entryStatus(int folder, const char* path);

/// The same for an absolute path.
[[nodiscard]] std::optional<EntryStatus> entryStatus(const char* path);

}  // namespace Brimlo::Platform
