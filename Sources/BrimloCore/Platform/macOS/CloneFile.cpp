#include "BrimloCore/Platform/CloneFile.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

std::unexpected<Error> failure() {
    Error error = Error::fromSystem(errno);
    error.description = "clonefile failed: " + error.description;
    return std::unexpected(std::move(error));
}

/// The mode to give to `taker`. The right to run as the owner or group stays behind where those are
/// others: it would be theirs then.
mode_t modeFor(const struct stat& taker, const struct stat& giver) {
    constexpr mode_t kAllBits = 07777;
    constexpr mode_t kWithoutIdentity = 01777;
    const bool isSame = taker.st_uid == giver.st_uid && taker.st_gid == giver.st_gid;
    return giver.st_mode & (isSame ? kAllBits : kWithoutIdentity);
}

}  // namespace

std::expected<void, Error> cloneFile(const std::string& original, const std::string& clone) {
    // By descriptor: by its path, a link that took the original's place would be followed.
    const Descriptor from{
        open(original.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    // The system brings owner, mode, times and attributes along.
    if (!from || fclonefileat(from.number(), AT_FDCWD, clone.c_str(), 0) != 0) {
        return failure();
    }
    return {};
}

void copyTimesAndMode(const std::string& source, const std::string& target) {
    struct stat giver {};
    struct stat taker {};
    if (stat(source.c_str(), &giver) != 0 || stat(target.c_str(), &taker) != 0) {
        return;
    }
    const std::array<timespec, 2> times{giver.st_atimespec, giver.st_mtimespec};
    utimensat(AT_FDCWD, target.c_str(), times.data(), 0);
    chmod(target.c_str(), modeFor(taker, giver));
}

}  // namespace Brimlo::Platform
