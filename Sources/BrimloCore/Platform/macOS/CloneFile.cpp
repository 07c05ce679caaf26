#include "BrimloCore/Platform/CloneFile.h"

#include <cerrno>
#include <cstdio>
#include <string_view>

#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

std::unexpected<Error> failure(int code) {
    return std::unexpected(Error::fromSystem(code));
}

}  // namespace

bool mayClone(const std::string& path) {
    struct statfs status{};
    return statfs(path.c_str(), &status) == 0 &&
           std::string_view{static_cast<const char*>(status.f_fstypename)} == "apfs";
}

std::expected<Descriptor, Error> cloneFile(int original, int folder, const std::string& name) {
    // The system clones owner, mode, times and attributes, too.
    if (fclonefileat(original, folder, name.c_str(), 0) != 0) {
        return failure(errno);
    }
    Descriptor clone{openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC)};
    if (!clone) {
        const int code = errno;
        unlinkat(folder, name.c_str(), 0);
        return failure(code);
    }
    return clone;
}

std::expected<void, Error> exchange(int folder, const std::string& one, const std::string& other) {
    if (renameatx_np(folder, one.c_str(), folder, other.c_str(), RENAME_SWAP) != 0) {
        return failure(errno);
    }
    return {};
}

std::expected<void, Error> holdWriters(int /*file*/) {
    return {};
}

bool isUndisturbed(int /*file*/) {
    return true;
}

}  // namespace Brimlo::Platform
