#include "BrimloCore/Platform/PrivatePrefix.h"

#include <string_view>

#include <sys/stat.h>

namespace Brimlo::Platform {

namespace {

bool isSame(const char* path, const char* other) {
    struct stat status {};
    struct stat otherStatus {};
    return stat(path, &status) == 0 && stat(other, &otherStatus) == 0 &&
           status.st_dev == otherStatus.st_dev && status.st_ino == otherStatus.st_ino;
}

}  // namespace

std::string withoutPrivatePrefix(std::string path) {
    constexpr std::string_view kPrefix = "/private";
    const bool isBelow = path.starts_with(kPrefix) && path[kPrefix.size()] == '/';
    if (isBelow && isSame(path.c_str(), path.c_str() + kPrefix.size())) {
        path.erase(0, kPrefix.size());
    }
    return path;
}

}  // namespace Brimlo::Platform
