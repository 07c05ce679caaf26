#include "BrimloCore/Platform/Privacy.h"

#include "BrimloCore/Platform/SystemPaths.h"

#include <algorithm>
#include <array>

#include <dirent.h>

namespace Brimlo::Platform {

namespace {

/// Words in the names of folders that macOS shows only to apps with Full Disk Access.
constexpr std::array<std::string_view, 30> kPrivateWords{
    "Safari",
    "Mail",
    "Messages",
    "Photos",
    "Accounts",
    "Biome",
    "IntelligencePlatform",
    "Shortcuts",
    "Daemon Containers",
    "Autosave Information",
    "Containers",
    "Group Containers",
    "Application Scripts",
    "Mobile Documents",
    "Metadata",
    "HomeKit",
    "Suggestions",
    "Calendars",
    "Reminders",
    "Trial",
    "News",
    "Weather",
    "Finance",
    "Sharing",
    "PersonalizationPortrait",
    "IdentityServices",
    "FaceTime",
    "DoNotDisturb",
    "Assistant",
    "com.apple",
};

}  // namespace

bool canReadProtectedFolders() {
    // One folder of those that Full Disk Access opens. An empty one still lists ".".
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

std::string reasonUnreadable(std::string_view area) {
    if (area == "~/.Trash") {
        return "The Trash is protected by macOS. Full Disk Access lets Brimlo see and size it.";
    }
    const bool isPrivate = std::ranges::any_of(
        kPrivateWords, [&](std::string_view word) { return area.contains(word); });
    if (isPrivate) {
        return "Private Apple or app data that macOS only shows to apps with Full Disk Access.";
    }
    return "macOS or the folder's owner denied access. If it is yours, check its permissions.";
}

}  // namespace Brimlo::Platform
