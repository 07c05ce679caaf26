#include "BrimloCore/Platform/Linux/UserFolders.h"

#include "BrimloCore/Platform/Linux/KeyFile.h"
#include "BrimloCore/Platform/SystemPaths.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <optional>

namespace Brimlo::Platform {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): set at start only
    return value != nullptr ? value : "";
}

/// Without ".", "..", empty components and trailing slash; symlinks are not followed.
std::string normalFolder(const std::string& path) {
    // One spelling, because paths in the Trash are compared as text. The last step drops the empty
    // component after a trailing slash.
    const std::filesystem::path normal = std::filesystem::path{path}.lexically_normal();
    return (normal.has_filename() ? normal : normal.parent_path()).string();
}

/// The folder named by a variable, or the one in the home folder.
std::string baseFolder(const char* name, const char* inHome) {
    const std::string folder = variable(name);
    return normalFolder(folder.starts_with('/') ? folder : homeFolder() + inHome);
}

/// The value of a shell assignment: the text in quotation marks, or up to a space without them.
std::string unquoted(std::string_view text) {
    const bool isQuoted = text.starts_with('"') || text.starts_with('\'');
    const char end = isQuoted ? text.front() : ' ';
    std::string value;
    for (std::size_t i = isQuoted ? 1 : 0; i < text.size() && text[i] != end; ++i) {
        if (text[i] == '\\' && end != '\'' && i + 1 < text.size()) {
            ++i;
        }
        value += text[i];
    }
    return value;
}

/// The folder that a line names.
std::optional<std::string> folderOf(std::string_view line, const std::string& home) {
    line = KeyFile::withoutSpaces(line);
    const std::size_t equals = line.find('=');
    const std::string_view name = KeyFile::withoutSpaces(line.substr(0, equals));
    if (equals == std::string_view::npos || !name.starts_with("XDG_") || !name.ends_with("_DIR")) {
        return std::nullopt;
    }
    std::string value = unquoted(KeyFile::withoutSpaces(line.substr(equals + 1)));
    for (const std::string_view variable : {"$HOME", "${HOME}", "~"}) {
        if (value == variable || value.starts_with(std::string{variable} + "/")) {
            value = home + value.substr(variable.size());
        }
    }
    if (!value.starts_with('/') || value.size() >= PATH_MAX || value.contains('\0')) {
        return std::nullopt;
    }
    return normalFolder(value);
}

}  // namespace

std::string dataHome() {
    return baseFolder("XDG_DATA_HOME", "/.local/share");
}

std::string configHome() {
    return baseFolder("XDG_CONFIG_HOME", "/.config");
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

std::vector<std::string> userFolders() {
    const std::string home = homeFolder();
    return home.empty()
               ? std::vector<std::string>{}
               : parseUserFolders(KeyFile::contentOf(configHome() + "/user-dirs.dirs"), home);
}

std::vector<std::string> parseUserFolders(std::string_view text, const std::string& home) {
    std::vector<std::string> folders;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const auto folder = folderOf(text.substr(0, end), home);
        if (folder && *folder != normalFolder(home)) {
            folders.push_back(*folder);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return folders;
}

}  // namespace Brimlo::Platform
