#include "BrimloCore/Support/StoragePaths.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::StoragePaths {

std::string home() {
    return Platform::withoutPrivatePrefix(Path::standardized("/" + Platform::homeFolder()));
}

std::optional<std::string> reasonNotToStart() {
    struct stat status{};
    const std::string folder = home();
    if (geteuid() != 0 || stat(folder.c_str(), &status) != 0 || status.st_uid == 0) {
        return std::nullopt;
    }
    return "Brimlo runs as root, but \"" + folder +
           "\" is another user's home, where it would leave files that this user can't change. Run "
           "it as that user, or with root's own home (sudo -H).";
}

std::string expandTilde(std::string_view path) {
    if (path == "~" || path.starts_with("~/")) {
        return home().append(path.substr(1));
    }
    return std::string{path};
}

std::string support() {
    std::string folder = expandTilde(kSupport);
    static_cast<void>(Folders::create(folder, Folders::Access::ownerOnly));
    return folder;
}

std::string journal() {
    return support() + "/journal.json";
}

}  // namespace Brimlo::StoragePaths
