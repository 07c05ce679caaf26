#include "BrimloCore/Support/FileLock.h"

#include "BrimloCore/Support/AtomicFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>

namespace Brimlo {

FileLock::FileLock(const std::string& path)
    : file_(open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    int result = -1;
    while (file_ && (result = flock(file_.number(), LOCK_EX)) != 0 && errno == EINTR) {
    }
    if (result == 0) {
        AtomicFile::removeLeftovers(path);
    } else {
        file_ = Platform::Descriptor{};
    }
}

}  // namespace Brimlo
