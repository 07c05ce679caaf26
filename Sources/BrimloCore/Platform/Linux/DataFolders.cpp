#include "BrimloCore/Platform/Linux/DataFolders.h"

#include "BrimloCore/Platform/HomeFolder.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>

namespace Brimlo::Platform {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): set at start only
    return value != nullptr ? value : "";
}

/// The folder that a variable names, or one in the home folder.
std::string folderOf(const char* name, const char* inHome) {
    const std::string folder = variable(name);
    return normalFolder(folder.starts_with('/') ? folder : homeFolder() + inHome);
}

}  // namespace

std::string dataHome() {
    return folderOf("XDG_DATA_HOME", "/.local/share");
}

std::string configHome() {
    return folderOf("XDG_CONFIG_HOME", "/.config");
}

std::string normalFolder(const std::string& path) {
    // Paths in the Trash are compared as text, so they are spelled in one way. The last step drops
    // what is empty behind a trailing slash.
    const std::filesystem::path normal = std::filesystem::path{path}.lexically_normal();
    return (normal.has_filename() ? normal : normal.parent_path()).string();
}

std::vector<std::string> dataFolders() {
    const std::string list = variable("XDG_DATA_DIRS");
    std::vector<std::string> folders =
        splitFolders(list.empty() ? "/usr/local/share:/usr/share" : list);
    folders.insert(folders.begin(), dataHome());
    return folders;
}

std::vector<std::string> splitFolders(std::string_view list) {
    std::vector<std::string> folders;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(':'), list.size());
        if (list.starts_with('/')) {
            folders.emplace_back(list.substr(0, end));
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return folders;
}

}  // namespace Brimlo::Platform
