#include "BrimloCore/Platform/CloneFile.h"

#include "BrimloCore/Platform/Posix/CloneDescription.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

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

/// All but the bytes. The mode comes after the owner, whose change takes bits of it away.
void copyDescription(int from, int to) {
    copyAttributes(from, to);
    struct stat giver {};
    struct stat taker {};
    if (fstat(from, &giver) != 0) {
        return;
    }
    // Where the owner can't be set, the clone stays the file of who makes it.
    static_cast<void>(!fchown(to, giver.st_uid, giver.st_gid));
    if (fstat(to, &taker) == 0) {
        fchmod(to, modeFor(taker, giver));
    }
    futimens(to, timesOf(giver).data());
}

}  // namespace

std::expected<void, Error> cloneFile(const std::string& original, const std::string& clone) {
    // Should the original have been replaced by a pipe, nobody waits for its other end.
    const Descriptor from{
        open(original.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    if (!from) {
        return cloneFailure(errno);
    }
    const Descriptor to{
        open(clone.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)};
    if (!to) {
        return cloneFailure(errno);
    }
    if (ioctl(to.number(), FICLONE, from.number()) != 0) {
        const int code = errno;
        unlink(clone.c_str());
        return cloneFailure(code);
    }
    copyDescription(from.number(), to.number());
    return {};
}

std::array<timespec, 2> timesOf(const struct stat& status) {
    return {status.st_atim, status.st_mtim};
}

}  // namespace Brimlo::Platform
