#include "BrimloCore/Support/StoragePaths.h"

#include "BrimloCore/Platform/HomeFolder.h"
#include "BrimloCore/Platform/PrivatePrefix.h"
#include "BrimloCore/Support/Folders.h"
#include "BrimloCore/Support/Path.h"

namespace Brimlo::StoragePaths {

std::string home() {
    return Platform::withoutPrivatePrefix(Path::standardized("/" + Platform::homeFolder()));
}

std::string expandTilde(std::string_view path) {
    if (path == "~" || path.starts_with("~/")) {
        return home().append(path.substr(1));
    }
    return std::string{path};
}

std::string support() {
    std::string folder = home() + "/Library/Application Support/Brimlo";
    static_cast<void>(Folders::create(folder, Folders::Access::ownerOnly));
    return folder;
}

std::string journal() {
    return support() + "/journal.json";
}

}  // namespace Brimlo::StoragePaths
