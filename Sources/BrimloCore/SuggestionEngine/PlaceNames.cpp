#include "BrimloCore/SuggestionEngine/PlaceNames.h"

#include "BrimloCore/Platform/Posix/IdentityOf.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/RealPath.h"

#include <sys/stat.h>

namespace Brimlo {

std::string PlaceNames::of(const std::string& path) {
    const std::string standard = Path::standardized(path);
    const auto [folder, isNew] = realFolders_.try_emplace(std::string{Path::parent(standard)});
    if (isNew) {
        folder->second = RealPath::of(folder->first);
    }
    return nameOf(Path::join(folder->second, Path::name(standard)));
}

/// A folder has the name under which it was first met. Another entry has its folder's name and its
/// own, as a file that has a second name (hard link) is there twice.
const std::string& PlaceNames::nameOf(const std::string& path) {
    const auto known = names_.find(path);
    if (known != names_.end()) {
        return known->second;
    }
    const std::string name =
        path == "/" ? path : Path::join(nameOf(std::string{Path::parent(path)}), Path::name(path));
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        return names_.emplace(path, name).first->second;
    }
    const auto first = byIdentity_.try_emplace(Platform::identityOf(status).text(), name).first;
    return names_.emplace(path, first->second).first->second;
}

}  // namespace Brimlo
