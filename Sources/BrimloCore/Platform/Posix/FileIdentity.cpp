#include "BrimloCore/Platform/FileIdentity.h"

#include "BrimloCore/Platform/Posix/Stat.h"

#include <sys/stat.h>

namespace Brimlo::Platform {

std::string FileIdentity::text() const {
    return std::to_string(static_cast<std::int32_t>(device)) + ":" + std::to_string(inode);
}

std::optional<FileIdentity> FileIdentity::of(const std::string& path) {
    struct stat status{};
    if (path.contains('\0') || lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return identityOf(status);
}

std::optional<FileVersion> FileVersion::of(int file) {
    struct stat status{};
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
