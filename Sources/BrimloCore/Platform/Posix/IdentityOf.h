#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>

#include <sys/stat.h>

namespace Brimlo::Platform {

/// The identity in a stat(2) result. The type of a device number differs between systems.
[[nodiscard]] inline FileIdentity identityOf(const struct stat& status) {
    return {.device = static_cast<std::uint64_t>(status.st_dev), .inode = status.st_ino};
}

}  // namespace Brimlo::Platform
