#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a volume holds besides the files that a walk finds, as far as an ordinary user may ask.
namespace Brimlo::Platform {

/// What the file system itself counts: bytes, and entries for files.
struct VolumeUse {
    std::int64_t total = 0;
    std::int64_t free = 0;       ///< Also what only the administrator may use.
    std::int64_t available = 0;  ///< To the user.
    std::int64_t files = 0;      ///< Entries in all; 0 where there is no limit.
    std::int64_t freeFiles = 0;  ///< Entries left.

    bool operator==(const VolumeUse&) const = default;
};

/// The figures of the volume of `path`; nullopt when unknown.
[[nodiscard]] std::optional<VolumeUse> volumeUse(const std::string& path);

/// The mounts from which a walk sees a volume.
struct VolumeView {
    std::vector<std::string> tops;  ///< Their mount points: each file lies below one alone.
    bool isWhole = false;           ///< Whether they show all of it.
};

/// The view of the volume of `path`; without tops when that can't be opened.
[[nodiscard]] VolumeView viewOfVolume(const std::string& path);

/// The folders on a volume that hold what this user moved to the Trash. Some may be missing.
[[nodiscard]] std::vector<std::string> trashFolders(const std::string& top);

/// Whether an open folder belongs to a snapshot: its files share their data with others.
[[nodiscard]] bool isInSnapshot(int folder);

/// Space that the file system uses for itself.
struct FileSystemPart {
    std::string name;
    std::int64_t bytes = 0;
};

/// The parts of the used space of the volume of `path` that no file shows. Empty where the file
/// system doesn't tell, or counts such space neither as used nor in the total, as ext4 does.
[[nodiscard]] std::vector<FileSystemPart> fileSystemParts(const std::string& path);

/// A file without a name that is still open.
struct DeletedFile {
    std::string process;  ///< The first that has it open: its name and id.
    FileIdentity identity;
    std::int64_t bytes = 0;  ///< Allocated.
};

struct DeletedFiles {
    std::vector<DeletedFile> files;     ///< Each once, of all volumes.
    std::int64_t unaskedProcesses = 0;  ///< Those that tell this user nothing.
};

/// The deleted files that processes hold open. Reads links and status, no content.
[[nodiscard]] DeletedFiles deletedOpenFiles();

}  // namespace Brimlo::Platform
