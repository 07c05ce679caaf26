#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>

#include <sys/stat.h>

namespace Brimlo::Platform {

/// The identity in what stat(2) tells. The number of a device has another type on each system.
[[nodiscard]] inline FileIdentity identityOf(const struct stat& status) {
    return {.device = static_cast<std::uint64_t>(status.st_dev), .inode = status.st_ino};
}

}  // namespace Brimlo::Platform
