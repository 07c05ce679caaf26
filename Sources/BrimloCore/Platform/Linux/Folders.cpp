#include "BrimloCore/Platform/Posix/Folders.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <cerrno>
#include <cstddef>
#include <string_view>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

constexpr int kReadFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// The same for kernels older than 5.6 and containers that forbid openat2(2).
int openStepByStep(int folder, std::string_view below) {
    Descriptor step;
    for (;;) {
        const std::size_t end = below.find('/');
        const std::string name{below.substr(0, end)};
        const int from = step ? step.number() : folder;
        if (end == std::string_view::npos) {
            return openat(from, name.c_str(), kReadFolder);
        }
        step =
            Descriptor{openat(from, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
        if (!step) {
            return -1;
        }
        below.remove_prefix(end + 1);
    }
}

}  // namespace

int openFolderBelow(int folder, const std::string& below) {
    if (!below.contains('/')) {
        return openat(folder, below.c_str(), kReadFolder);
    }
    open_how how{};
    how.flags = kReadFolder;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long opened = syscall(SYS_openat2, folder, below.c_str(), &how, sizeof how);
    return opened < 0 && (errno == ENOSYS || errno == EPERM) ? openStepByStep(folder, below)
                                                             : static_cast<int>(opened);
}

std::uint64_t mountID(int descriptor) {
    struct statx status{};
    const bool isKnown = statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) == 0 &&
                         (status.stx_mask & STATX_MNT_ID) != 0;
    return isKnown ? status.stx_mnt_id : 0;
}

bool makeWritable(int parent, const std::string& name) {
    const Descriptor folder{
        openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
    if (!folder) {
        return false;
    }
    // fchmod(2) fails for an O_PATH descriptor. This name of it means the folder itself, whatever
    // its path leads to by now.
    const std::string self = "/proc/self/fd/" + std::to_string(folder.number());
    return chmod(self.c_str(), S_IRWXU) == 0;
}

}  // namespace Brimlo::Platform
