#include "BrimloCore/Platform/Privacy.h"

#include "BrimloCore/Platform/HomeFolder.h"

#include <dirent.h>

namespace Brimlo::Platform {

bool canReadProtectedFolders() {
    // One folder stands for all that "Full Disk Access" opens. It lists itself, if nothing else.
    DIR* const folder = opendir((homeFolder() + "/Library/Safari").c_str());
    if (folder == nullptr) {
        return false;
    }
    const bool isListed = readdir(folder) != nullptr;
    closedir(folder);
    return isListed;
}

std::string privacySettingsAddress() {
    return "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
}

}  // namespace Brimlo::Platform
