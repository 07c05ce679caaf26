#include "BrimloCore/Platform/Posix/Folders.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Brimlo::Platform {

int openFolderBelow(int folder, const std::string& below) {
    return openat(folder, below.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW_ANY | O_CLOEXEC);
}

std::uint64_t mountID(int descriptor) {
    struct stat status{};
    return fstat(descriptor, &status) == 0 ? static_cast<std::uint32_t>(status.st_dev) : 0;
}

bool makeWritable(int parent, const std::string& name) {
    return fchmodat(parent, name.c_str(), S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0;
}

}  // namespace Brimlo::Platform
