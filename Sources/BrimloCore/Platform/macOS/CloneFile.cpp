#include "BrimloCore/Platform/CloneFile.h"

#include "BrimloCore/Platform/Posix/CloneDescription.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::expected<void, Error> cloneFile(const std::string& original, const std::string& clone) {
    // By descriptor: by its path, a link that took the original's place would be followed.
    const Descriptor from{
        open(original.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    // The system brings owner, mode, times and attributes along.
    if (!from || fclonefileat(from.number(), AT_FDCWD, clone.c_str(), 0) != 0) {
        return cloneFailure(errno);
    }
    return {};
}

std::array<timespec, 2> timesOf(const struct stat& status) {
    return {status.st_atimespec, status.st_mtimespec};
}

}  // namespace Brimlo::Platform
