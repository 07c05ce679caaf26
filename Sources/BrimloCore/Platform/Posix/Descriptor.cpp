#include "BrimloCore/Platform/Posix/Descriptor.h"

#include "BrimloCore/Platform/Posix/Stat.h"

#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <sys/stat.h>
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
    // On macOS fsync(2) leaves the bytes in the disk's cache. Not every file system has this call.
    if (fcntl(descriptor, F_FULLFSYNC) == 0) {
        return true;
    }
#endif
    return fsync(descriptor) == 0;
}

bool writeAndSync(int descriptor, std::string_view bytes) {
    return writeBytes(descriptor, bytes) && syncFile(descriptor);
}

void syncFolder(int folder) {
    if (fsync(folder) == 0) {
        return;
    }
    // A descriptor that was opened for searching alone can't be synced.
    const Descriptor readable{openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (readable) {
        fsync(readable.number());
    }
}

void readAhead(int file, std::int64_t offset, std::int64_t count) {
#ifdef F_RDADVISE
    radvisory part{.ra_offset = offset, .ra_count = static_cast<int>(count)};
    fcntl(file, F_RDADVISE, &part);
#else
    posix_fadvise(file, offset, count, POSIX_FADV_WILLNEED);
#endif
}

void copyTimesAndMode(int giver, int taker) {
    struct stat given{};
    struct stat taken{};
    if (fstat(giver, &given) != 0 || fstat(taker, &taken) != 0) {
        return;
    }
    futimens(taker, timesOf(given).data());
    fchmod(taker, modeFor(taken, given));
}

}  // namespace Brimlo::Platform
