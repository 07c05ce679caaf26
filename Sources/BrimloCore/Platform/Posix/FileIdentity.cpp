#include "BrimloCore/Platform/FileIdentity.h"

#include "BrimloCore/Platform/Posix/IdentityOf.h"

#include <sys/stat.h>

namespace Brimlo::Platform {

std::string FileIdentity::text() const {
    return std::to_string(static_cast<std::int32_t>(device)) + ":" + std::to_string(inode);
}

std::optional<FileIdentity> FileIdentity::of(const std::string& path) {
    struct stat status {};
    if (path.contains('\0') || lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return identityOf(status);
}

}  // namespace Brimlo::Platform
