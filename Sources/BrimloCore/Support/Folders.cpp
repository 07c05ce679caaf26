#include "BrimloCore/Support/Folders.h"

#include "BrimloCore/Support/Path.h"

#include <cerrno>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <sys/stat.h>

namespace Brimlo::Folders {

namespace {

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::expected<void, Error> create(const std::string& path, Access access) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    // From the top down, so that a deep chain costs no recursion.
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (mkdir(folder.c_str(), access == Access::ownerOnly ? 0700 : 0777) != 0) {
            const int reason = errno;
            if (!isFolder(folder)) {
                return std::unexpected(Error::fromSystem(reason == EEXIST ? ENOTDIR : reason));
            }
        }
        if (end == std::string::npos) {
            return {};
        }
    }
}

std::expected<std::vector<std::string>, Error> names(const std::string& path) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    const auto close = [](DIR* folder) { closedir(folder); };
    const std::unique_ptr<DIR, decltype(close)> folder{opendir(path.c_str()), close};
    if (!folder) {
        return std::unexpected(Error::fromSystem(errno));
    }
    std::vector<std::string> names;
    errno = 0;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread has this folder
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
        errno = 0;
    }
    if (errno != 0) {
        return std::unexpected(Error::fromSystem(errno));
    }
    return names;
}

}  // namespace Brimlo::Folders
