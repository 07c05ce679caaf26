#include "BrimloCore/Platform/Volume.h"

#include <sys/statvfs.h>

namespace Brimlo::Platform {

std::optional<VolumeCapacity> volumeCapacity(const std::string& path) {
    struct statvfs status {};
    if (statvfs(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    const auto unit = static_cast<std::int64_t>(status.f_frsize);
    return VolumeCapacity{
        .total = static_cast<std::int64_t>(status.f_blocks) * unit,
        // Without the blocks that are kept back for the administrator.
        .available = static_cast<std::int64_t>(status.f_bavail) * unit,
        .availableForImportantUsage = std::nullopt,
    };
}

}  // namespace Brimlo::Platform
