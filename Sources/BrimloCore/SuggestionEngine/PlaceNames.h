#pragma once

#include <string>
#include <unordered_map>

namespace Brimlo {

/// Gives each place one name, whichever path leads to it: symlinks, bind mounts and letter case
/// give one folder several. Caches what it saw, so it lives for one run.
class PlaceNames {
public:
    /// The name of the entry at `path`, which is absolute: a symlink's own, not its target's.
    [[nodiscard]] std::string of(const std::string& path);

private:
    const std::string& nameOf(const std::string& path);

    std::unordered_map<std::string, std::string> names_;       ///< By path without symlinks.
    std::unordered_map<std::string, std::string> byIdentity_;  ///< The first name of each folder.
    std::unordered_map<std::string, std::string> realFolders_;
};

}  // namespace Brimlo
