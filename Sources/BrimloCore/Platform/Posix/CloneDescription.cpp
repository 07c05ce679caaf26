#include "BrimloCore/Platform/Posix/CloneDescription.h"

#include "BrimloCore/Platform/CloneFile.h"

#include <utility>

#include <fcntl.h>

namespace Brimlo::Platform {

std::unexpected<Error> cloneFailure(int code) {
    Error error = Error::fromSystem(code);
    error.description = "clonefile failed: " + error.description;
    return std::unexpected(std::move(error));
}

mode_t modeFor(const struct stat& taker, const struct stat& giver) {
    constexpr mode_t kAllBits = 07777;
    constexpr mode_t kWithoutIdentity = 01777;
    const bool isSame = taker.st_uid == giver.st_uid && taker.st_gid == giver.st_gid;
    return giver.st_mode & (isSame ? kAllBits : kWithoutIdentity);
}

void copyTimesAndMode(const std::string& source, const std::string& target) {
    struct stat giver {};
    struct stat taker {};
    if (stat(source.c_str(), &giver) != 0 || stat(target.c_str(), &taker) != 0) {
        return;
    }
    utimensat(AT_FDCWD, target.c_str(), timesOf(giver).data(), 0);
    chmod(target.c_str(), modeFor(taker, giver));
}

}  // namespace Brimlo::Platform
