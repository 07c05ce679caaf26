#include "BrimloCore/Platform/Linux/UserFolders.h"

#include "BrimloCore/Platform/HomeFolder.h"
#include "BrimloCore/Platform/Linux/DataFolders.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <array>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace Brimlo::Platform {

namespace {

constexpr std::string_view kSpace = " \t\r";

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
    return text.substr(0, text.find_last_not_of(kSpace) + 1);
}

/// The value of a shell assignment: what stands in quotation marks, or up to a space without them.
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
    line = trimmed(line);
    const std::size_t equals = line.find('=');
    const std::string_view name = trimmed(line.substr(0, equals));
    if (equals == std::string_view::npos || !name.starts_with("XDG_") || !name.ends_with("_DIR")) {
        return std::nullopt;
    }
    std::string value = unquoted(trimmed(line.substr(equals + 1)));
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

/// The beginning of a regular file; a pipe in its place would keep us waiting.
std::string beginningOf(const std::string& path) {
    constexpr std::size_t kLongest = 65'536;
    const Descriptor file{open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)};
    struct stat status {};
    std::string text(kLongest, '\0');
    const bool isFile = file && fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
    const ssize_t length = isFile ? read(file.number(), text.data(), text.size()) : 0;
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
}

}  // namespace

std::vector<std::string> userFolders() {
    const std::string home = homeFolder();
    return home.empty() ? std::vector<std::string>{}
                        : parseUserFolders(beginningOf(configHome() + "/user-dirs.dirs"), home);
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
