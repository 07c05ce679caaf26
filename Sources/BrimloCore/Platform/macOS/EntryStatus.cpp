#include "BrimloCore/Platform/EntryStatus.h"

#include "BrimloCore/Platform/Posix/IdentityOf.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Brimlo::Platform {

namespace {

EntryStatus::Kind kindOf(mode_t mode) {
    if (S_ISDIR(mode)) {
        return EntryStatus::Kind::directory;
    }
    return S_ISREG(mode) ? EntryStatus::Kind::file : EntryStatus::Kind::other;
}

}  // namespace

std::optional<EntryStatus> entryStatus(int folder, const char* path) {
    struct stat status {};
    if (fstatat(folder, path, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return std::nullopt;
    }
    return EntryStatus{
        .kind = kindOf(status.st_mode),
        .allocatedBytes = status.st_blocks * kBlockBytes,
        .length = status.st_size,
        .linkCount = status.st_nlink,
        .identity = identityOf(status),
        .modified = std::chrono::sys_seconds{std::chrono::seconds{status.st_mtimespec.tv_sec}},
    };
}

std::optional<EntryStatus> entryStatus(const char* path) {
    return entryStatus(AT_FDCWD, path);
}

}  // namespace Brimlo::Platform
