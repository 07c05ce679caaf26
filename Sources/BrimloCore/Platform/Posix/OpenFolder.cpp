#include "BrimloCore/Platform/Posix/OpenFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <utility>

#include <fcntl.h>

namespace Brimlo::Platform {

namespace {

#ifdef O_PATH
constexpr int kSearchOnly = O_PATH;
#else
constexpr int kSearchOnly = O_SEARCH;
#endif
constexpr int kFlags = kSearchOnly | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

}  // namespace

std::expected<Descriptor, Error> openFolder(std::string_view path) {
    Descriptor folder{open("/", kFlags)};
    while (folder && !path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string component{path.substr(0, end)};
        path.remove_prefix(std::min(end + 1, path.size()));
        if (!component.empty()) {
            folder = Descriptor{openat(folder.number(), component.c_str(), kFlags)};
        }
    }
    if (!folder) {
        return std::unexpected(Error::fromSystem(errno));
    }
    return folder;
}

}  // namespace Brimlo::Platform
