#include "BrimloCore/Platform/Volume.h"

#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::optional<VolumeCapacity> volumeCapacity(const std::string& path) {
    struct statvfs status{};
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

bool syncVolume(const std::string& folder) {
    const Descriptor opened{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    return opened && syncfs(opened.number()) == 0;
}

struct OtherNames::Mounts {
    MountTable table;
};

OtherNames::OtherNames()
    : mounts_(std::make_shared<const Mounts>(MountTable::read())) {}

std::vector<std::string> OtherNames::of(std::string_view path) const {
    return mounts_->table.otherNames(path);
}

}  // namespace Brimlo::Platform
