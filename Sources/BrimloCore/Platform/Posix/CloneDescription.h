#pragma once

#include "BrimloCore/Models/Error.h"

#include <array>
#include <expected>

#include <sys/stat.h>

/// What the clones of all systems have in common.
namespace Brimlo::Platform {

/// The failure of a clone: "clonefile failed: " and the system's words.
[[nodiscard]] std::unexpected<Error> cloneFailure(int code);

/// The mode to give to `taker`. The right to run as the owner or group stays behind where those are
/// others: it would be theirs then.
[[nodiscard]] mode_t modeFor(const struct stat& taker, const struct stat& giver);

/// When a file was last read, last written and last changed in any way. Each system has other names
/// for the fields.
[[nodiscard]] std::array<timespec, 3> timesOf(const struct stat& status);

}  // namespace Brimlo::Platform
