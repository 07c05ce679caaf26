#include "BrimloCore/Platform/VolumeParts.h"

#include "BrimloCore/Platform/Trash.h"

#include <sys/mount.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

std::optional<struct statfs> statusOf(const std::string& path) {
    struct statfs status{};
    return statfs(path.c_str(), &status) == 0 ? std::optional{status} : std::nullopt;
}

}  // namespace

std::optional<VolumeUse> volumeUse(const std::string& path) {
    const auto status = statusOf(path);
    if (!status) {
        return std::nullopt;
    }
    const auto unit = static_cast<std::int64_t>(status->f_bsize);
    return VolumeUse{
        .total = static_cast<std::int64_t>(status->f_blocks) * unit,
        .free = static_cast<std::int64_t>(status->f_bfree) * unit,
        .available = static_cast<std::int64_t>(status->f_bavail) * unit,
        .files = static_cast<std::int64_t>(status->f_files),
        .freeFiles = static_cast<std::int64_t>(status->f_ffree),
    };
}

// The volumes of one APFS container share its free space, so a volume is never all that it counts.
VolumeView viewOfVolume(const std::string& path) {
    const auto status = statusOf(path);
    return status ? VolumeView{.tops = {status->f_mntonname}, .isWhole = false} : VolumeView{};
}

std::vector<std::string> trashFolders(const std::string& top) {
    return {homeTrash(), top + "/.Trashes/" + std::to_string(getuid())};
}

// A snapshot has a mount of its own.
bool isInSnapshot(int /*folder*/) {
    return false;
}

// APFS doesn't tell.
std::vector<FileSystemPart> fileSystemParts(const std::string& /*path*/) {
    return {};
}

// No call tells which open files have no name.
DeletedFiles deletedOpenFiles() {
    return {};
}

}  // namespace Brimlo::Platform
