#include "BrimloCore/Platform/Privacy.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/SystemPaths.h"

#include <cerrno>

#include <fcntl.h>

namespace Brimlo::Platform {

bool canReadProtectedFolders() {
    // Linux hides nothing from the user, and the folder rarely exists; tests create it.
    const std::string folder = homeFolder() + "/Library/Safari";
    const Descriptor opened{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    return opened || errno == ENOENT || errno == ENOTDIR;
}

std::string privacySettingsAddress() {
    return "";
}

std::string reasonUnreadable(std::string_view /*area*/) {
    return "The folder's owner or the system denied access. If it is yours, check its permissions.";
}

}  // namespace Brimlo::Platform
