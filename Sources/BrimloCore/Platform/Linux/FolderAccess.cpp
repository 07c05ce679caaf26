#include "BrimloCore/Platform/Posix/FolderAccess.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Brimlo::Platform {

std::uint64_t mountID(int descriptor) {
    struct statx status {};
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
    // A descriptor opened for its path alone has no fchmod; this name of it stands for the very
    // folder and not for whatever its path leads to by now.
    const std::string self = "/proc/self/fd/" + std::to_string(folder.number());
    return chmod(self.c_str(), S_IRWXU) == 0;
}

}  // namespace Brimlo::Platform
