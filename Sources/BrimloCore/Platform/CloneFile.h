#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>

namespace Brimlo::Platform {

/// Makes `clone`, a file that shares its bytes on the disk with `original` until one of the two is
/// written to, with the owner, mode, times and extended attributes of `original` as far as the
/// system lets them be set.
///
/// `original` is a regular file and no link. Fails with the system's code, and "clonefile failed: "
/// before its words, when the volume knows no clones, the two lie on different ones, or there is
/// something at `clone`, which then stays; nothing is left behind.
[[nodiscard]] std::expected<void, Error> cloneFile(
    const std::string& original, const std::string& clone);

/// Gives the file at `target` the times and the mode of the one at `source`, as far as both can be
/// reached.
void copyTimesAndMode(const std::string& source, const std::string& target);

}  // namespace Brimlo::Platform
