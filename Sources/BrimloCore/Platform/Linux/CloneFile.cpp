#include "BrimloCore/Platform/CloneFile.h"

#include "BrimloCore/Platform/Posix/Stat.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

std::unexpected<Error> failure(int code) {
    return std::unexpected(Error::fromSystem(code));
}

void copyAttributes(int from, int to) {
    std::vector<char> names(XATTR_LIST_MAX);
    std::vector<char> value(XATTR_SIZE_MAX);
    const ssize_t length = flistxattr(from, names.data(), names.size());
    for (ssize_t at = 0; at < length;) {
        const char* name = names.data() + at;
        const ssize_t size = fgetxattr(from, name, value.data(), value.size());
        if (size >= 0) {
            fsetxattr(to, name, value.data(), static_cast<std::size_t>(size), 0);
        }
        at += static_cast<ssize_t>(std::string_view{name}.size()) + 1;
    }
}

/// Copies all but the bytes. The mode comes after the owner, because chown(2) clears mode bits.
void copyDescription(int from, int to) {
    copyAttributes(from, to);
    struct stat giver{};
    struct stat taker{};
    if (fstat(from, &giver) != 0) {
        return;
    }
    // An owner that can't be set leaves the clone to this user.
    static_cast<void>(!fchown(to, giver.st_uid, giver.st_gid));
    if (fstat(to, &taker) == 0) {
        fchmod(to, modeFor(taker, giver));
    }
    futimens(to, timesOf(giver).data());
}

}  // namespace

bool mayClone(const std::string& path) {
    // OCFS2, ZFS, bcachefs and SMB 2; some of them are missing in <linux/magic.h> of Debian 12.
    constexpr std::array<std::uint32_t, 7> kTypes{
        BTRFS_SUPER_MAGIC,
        XFS_SUPER_MAGIC,
        NFS_SUPER_MAGIC,
        0x7461636F,
        0x2FC12FC1,
        0xCA451A4E,
        0xFE534D42};
    struct statfs status{};
    return statfs(path.c_str(), &status) == 0 &&
           std::ranges::count(kTypes, static_cast<std::uint32_t>(status.f_type)) > 0;
}

std::expected<Descriptor, Error> cloneFile(int original, int folder, const std::string& name) {
    Descriptor clone{
        openat(folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
    if (!clone) {
        return failure(errno);
    }
    if (ioctl(clone.number(), FICLONE, original) != 0) {
        const int code = errno;
        unlinkat(folder, name.c_str(), 0);
        return failure(code);
    }
    copyDescription(original, clone.number());
    return clone;
}

std::expected<void, Error> exchange(int folder, const std::string& one, const std::string& other) {
    if (renameat2(folder, one.c_str(), folder, other.c_str(), RENAME_EXCHANGE) != 0) {
        return failure(errno);
    }
    return {};
}

std::expected<void, Error> holdWriters(int file) {
    // A lease is granted only while nobody has the file open for writing, and blocks later writers
    // until it is released. The default signal to its holder, SIGIO, would end this process.
    if (fcntl(file, F_SETSIG, SIGURG) == 0 && fcntl(file, F_SETLEASE, F_RDLCK) == 0) {
        return {};
    }
    Error error = Error::fromSystem(errno);
    if (error.code == EAGAIN) {
        error.description = "is open for writing in another program";
    }
    return std::unexpected(std::move(error));
}

bool isUndisturbed(int file) {
    return fcntl(file, F_GETLEASE) == F_RDLCK;
}

}  // namespace Brimlo::Platform
