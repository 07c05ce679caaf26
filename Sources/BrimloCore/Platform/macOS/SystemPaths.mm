#include "BrimloCore/Platform/SystemPaths.h"

#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <cstdlib>
#include <string_view>

#include <sys/stat.h>

namespace Brimlo::Platform {

namespace {

bool isSame(const char* path, const char* other) {
    struct stat status{};
    struct stat otherStatus{};
    return stat(path, &status) == 0 && stat(other, &otherStatus) == 0 &&
           identityOf(status) == identityOf(otherStatus);
}

}  // namespace

std::string_view systemName() {
    return "macos";
}

std::string_view systemLabel() {
    return "macOS";
}

bool isOfAnotherSystem(std::string_view path) {
    return path.starts_with("~/.var/app/") || path.starts_with("~/snap/") ||
           path.starts_with("~/.steam/") || path.starts_with("~/Videos/");
}

std::string homeFolder() {
    // Foundation reads this variable, too, but only when the program starts.
    const char* const fixed = std::getenv("CFFIXED_USER_HOME");
    if (fixed != nullptr && fixed[0] == '/') {
        return fixed;
    }
    @autoreleasepool {
        return text(NSHomeDirectory());
    }
}

std::string withoutPrivatePrefix(std::string path) {
    constexpr std::string_view kPrefix = "/private";
    const bool isBelow = path.starts_with(kPrefix) && path[kPrefix.size()] == '/';
    if (isBelow && isSame(path.c_str(), path.c_str() + kPrefix.size())) {
        path.erase(0, kPrefix.size());
    }
    return path;
}

std::vector<std::string> systemToolPaths(std::string_view /*name*/) {
    return {};
}

}  // namespace Brimlo::Platform
