#pragma once

#include <string>
#include <unordered_map>

namespace Brimlo {

/// Gives each place one name, whichever of its paths one comes by: links, bind mounts and letter
/// case lead to the same folder by several. Remembers what it saw, so it lives as long as one run.
class PlaceNames {
public:
    /// That of the entry at `path`, which is absolute: a link's own, not its target's.
    [[nodiscard]] std::string of(const std::string& path);

private:
    const std::string& nameOf(const std::string& path);

    std::unordered_map<std::string, std::string> names_;       ///< By path, free of links.
    std::unordered_map<std::string, std::string> byIdentity_;  ///< The first name of each folder.
    std::unordered_map<std::string, std::string> realFolders_;
};

}  // namespace Brimlo
