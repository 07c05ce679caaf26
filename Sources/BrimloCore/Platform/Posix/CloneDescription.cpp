#include "BrimloCore/Platform/Posix/CloneDescription.h"

#include "BrimloCore/Platform/CloneFile.h"
#include "BrimloCore/Platform/FileVersion.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"

#include <utility>

#include <sys/stat.h>

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

void copyTimesAndMode(int giver, int taker) {
    struct stat given {};
    struct stat taken {};
    if (fstat(giver, &given) != 0 || fstat(taker, &taken) != 0) {
        return;
    }
    futimens(taker, timesOf(given).data());
    fchmod(taker, modeFor(taken, given));
}

std::optional<FileVersion> FileVersion::of(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    const auto time = [](const timespec& it) { return Time{it.tv_sec, it.tv_nsec}; };
    const auto [read, written, changed] = timesOf(status);
    return FileVersion{
        .identity = identityOf(status),
        .length = status.st_size,
        .names = status.st_nlink,
        .written = time(written),
        .changed = time(changed)};
}

}  // namespace Brimlo::Platform
