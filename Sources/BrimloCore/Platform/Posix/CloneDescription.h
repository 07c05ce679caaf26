#pragma once

#include "BrimloCore/Models/Error.h"

#include <array>
#include <expected>

#include <sys/stat.h>

/// What clones on all systems share.
namespace Brimlo::Platform {

/// The failure of a clone: "clonefile failed: " and the system's words.
[[nodiscard]] std::unexpected<Error> cloneFailure(int code);

/// The mode for `taker`. The setuid and setgid bits are dropped where owner or group differ.
[[nodiscard]] mode_t modeFor(const struct stat& taker, const struct stat& giver);

/// A file's access, modification and change times. Each system names the fields differently.
[[nodiscard]] std::array<timespec, 3> timesOf(const struct stat& status);

}  // namespace Brimlo::Platform
