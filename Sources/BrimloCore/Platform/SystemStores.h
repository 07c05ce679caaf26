#pragma once

#include <string>
#include <vector>

namespace Brimlo::Platform {

/// What the system, or a tool that manages its own storage, keeps outside the user's files. Brimlo
/// removes nothing of it: its owner has a command for that.
struct SystemStore {
    std::string name;
    std::string about;                  ///< A sentence: what it is.
    std::vector<std::string> paths;     ///< Its files and folders, absolute. Some may be missing.
    std::vector<std::string> commands;  ///< Those of the owner that free it, to be copied.

    bool operator==(const SystemStore&) const = default;
};

/// The stores that this system can have. `root` stands for "/", and ends with a slash. Lists a few
/// folders; reads no content but that of Flatpak's small metadata files.
[[nodiscard]] std::vector<SystemStore> systemStores(const std::string& root = "/");

}  // namespace Brimlo::Platform
