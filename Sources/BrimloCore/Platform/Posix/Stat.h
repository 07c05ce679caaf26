#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <array>
#include <cstdint>

#include <sys/stat.h>

/// Reading stat(2) results. The systems name and type their fields differently.
namespace Brimlo::Platform {

using Stat = struct stat;

[[nodiscard]] inline FileIdentity identityOf(const Stat& status) {
    return {.device = static_cast<std::uint64_t>(status.st_dev), .inode = status.st_ino};
}

/// The times of access, modification and change.
[[nodiscard]] inline std::array<timespec, 3> timesOf(const Stat& status) {
#ifdef __APPLE__
    return {status.st_atimespec, status.st_mtimespec, status.st_ctimespec};
#else
    return {status.st_atim, status.st_mtim, status.st_ctim};
#endif
}

/// The mode for `taker` when it replaces `giver`: the setuid and setgid bits are dropped where
/// owner or group differ.
[[nodiscard]] inline mode_t modeFor(const Stat& taker, const Stat& giver) {
    constexpr mode_t kAllBits = 07777;
    constexpr mode_t kWithoutIdentity = 01777;
    const bool isSame = taker.st_uid == giver.st_uid && taker.st_gid == giver.st_gid;
    return giver.st_mode & (isSame ? kAllBits : kWithoutIdentity);
}

}  // namespace Brimlo::Platform
