#include "BrimloCore/Platform/SystemPaths.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::string_view systemName() {
    return "linux";
}

std::string_view systemLabel() {
    return "Linux";
}

bool isOfAnotherSystem(std::string_view path) {
    static constexpr std::array<std::string_view, 10> kFolders{
        "~/Applications/",
        "~/Library/",
        "~/Movies/",
        "/Applications/",
        "/Library/",
        "/System/",
        "/Users/",
        "/Volumes/",
        "/opt/homebrew/",
        "/private/",
    };
    return std::ranges::any_of(
        kFolders, [&](std::string_view folder) { return path.starts_with(folder); });
}

std::string homeFolder() {
    const char* home = std::getenv("HOME");  // NOLINT(concurrency-mt-unsafe): set at start only
    if (home != nullptr && home[0] == '/') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> buffer{};
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? found->pw_dir : "";
}

std::string withoutPrivatePrefix(std::string path) {
    return path;
}

std::vector<std::string> systemToolPaths(std::string_view name) {
    return {"/usr/bin/" + std::string{name}};
}

}  // namespace Brimlo::Platform
