#include "BrimloCore/Platform/CloneFile.h"

#include "BrimloCore/Platform/Posix/CloneDescription.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::expected<Descriptor, Error> cloneFile(int original, int folder, const std::string& name) {
    // The system brings owner, mode, times and attributes along.
    if (fclonefileat(original, folder, name.c_str(), 0) != 0) {
        return cloneFailure(errno);
    }
    Descriptor clone{openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC)};
    if (!clone) {
        const int code = errno;
        unlinkat(folder, name.c_str(), 0);
        return cloneFailure(code);
    }
    return clone;
}

std::expected<void, Error> exchange(int folder, const std::string& one, const std::string& other) {
    if (renameatx_np(folder, one.c_str(), folder, other.c_str(), RENAME_SWAP) != 0) {
        return std::unexpected(Error::fromSystem(errno));
    }
    return {};
}

// APFS does not tell which of its blocks are shared.
std::optional<std::vector<Extent>> sharedExtents(int /*file*/) {
    return std::nullopt;
}

std::array<timespec, 3> timesOf(const struct stat& status) {
    return {status.st_atimespec, status.st_mtimespec, status.st_ctimespec};
}

}  // namespace Brimlo::Platform
