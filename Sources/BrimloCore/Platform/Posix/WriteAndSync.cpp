#include "BrimloCore/Platform/Posix/WriteAndSync.h"

#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Platform {

bool writeBytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

bool syncFile(int descriptor) {
#ifdef F_FULLFSYNC
    // There fsync(2) lets the disk keep the bytes to itself. Not every file system knows more.
    if (fcntl(descriptor, F_FULLFSYNC) == 0) {
        return true;
    }
#endif
    return fsync(descriptor) == 0;
}

bool writeAndSync(int descriptor, std::string_view bytes) {
    return writeBytes(descriptor, bytes) && syncFile(descriptor);
}

}  // namespace Brimlo::Platform
