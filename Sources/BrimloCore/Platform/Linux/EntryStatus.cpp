#include "BrimloCore/Platform/EntryStatus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace Brimlo::Platform {

namespace {

/// A file system over a network need not ask its server for more, nor for the latest.
constexpr unsigned kMask =
    STATX_TYPE | STATX_BLOCKS | STATX_SIZE | STATX_NLINK | STATX_INO | STATX_MTIME;
constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;

EntryStatus::Kind kindOf(const struct statx& status) {
    if (S_ISDIR(status.stx_mode)) {
        return EntryStatus::Kind::directory;
    }
    return S_ISREG(status.stx_mode) ? EntryStatus::Kind::file : EntryStatus::Kind::other;
}

}  // namespace

std::optional<EntryStatus> entryStatus(int folder, const char* path) {
    struct statx status {};
    if (statx(folder, path, kFlags, kMask, &status) != 0) {
        return std::nullopt;
    }
    return EntryStatus{
        .kind = kindOf(status),
        .allocatedBytes = static_cast<std::int64_t>(status.stx_blocks) * kBlockBytes,
        .length = static_cast<std::int64_t>(status.stx_size),
        .linkCount = status.stx_nlink,
        .identity =
            {.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                       .inode = status.stx_ino},
        .modified = std::chrono::sys_seconds{std::chrono::seconds{status.stx_mtime.tv_sec}               },
    };
}

std::optional<EntryStatus> entryStatus(const char* path) {
    return entryStatus(AT_FDCWD, path);
}

}  // namespace Brimlo::Platform
