#include "BrimloCore/Support/Path.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Path {

namespace {

std::string currentFolder() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    return error ? "/" : folder.native();
}

void append(std::string& result, std::string_view path) {
    std::size_t start = 0;
    while (start < path.size()) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        const std::string_view component = path.substr(start, end - start);
        if (component == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
        } else if (!component.empty() && component != ".") {
            result += '/';
            result += component;
        }
        start = end + 1;
    }
}

/// The file type at a path, 0 for none; of a symlink itself.
mode_t kindOf(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

bool isFolder(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::unexpected<Error> failure(std::string sentence) {
    return std::unexpected(Error{.domain = kErrorDomain, .description = std::move(sentence)});
}

}  // namespace

std::string standardized(std::string_view path) {
    std::string result;
    result.reserve(path.size());
    if (!path.starts_with('/')) {
        append(result, currentFolder());
    }
    append(result, path);
    return result.empty() ? "/" : result;
}

std::string_view name(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos || path == "/") {
        return path;
    }
    return path.substr(slash + 1);
}

std::string_view parent(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string_view::npos ? "/" : path.substr(0, slash);
}

std::string join(std::string_view folder, std::string_view name) {
    std::string path{folder};
    if (!path.ends_with('/')) {
        path += '/';
    }
    path += name;
    return path;
}

std::optional<std::string_view> below(std::string_view folder, std::string_view path) {
    if (!path.starts_with(folder)) {
        return std::nullopt;
    }
    const std::string_view rest = path.substr(folder.size());
    if (rest.empty()) {
        return rest;
    }
    if (folder.ends_with('/')) {
        return rest;
    }
    return rest.front() == '/' ? std::optional{rest.substr(1)} : std::nullopt;
}

bool isUsable(std::string_view path) {
    return !path.empty() && !path.contains('\0');
}

std::string resolved(std::string_view path) {
    constexpr int kMostLinks = 64;
    // Components still to walk, the next one last. A symlink is replaced by those of its target.
    std::vector<std::string> pending;
    const auto push = [&](std::string_view text) {
        while (!text.empty()) {
            const std::size_t slash = text.rfind('/');
            const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
            if (start < text.size()) {
                pending.emplace_back(text.substr(start));
            }
            text = text.substr(0, slash == std::string_view::npos ? 0 : slash);
        }
    };
    push(path);

    std::string walked;  // Without trailing slash; empty for the root.
    int links = 0;
    std::array<char, PATH_MAX> target{};
    while (!pending.empty()) {
        const std::string component = std::move(pending.back());
        pending.pop_back();
        const std::size_t above = walked.size();
        if (component == ".") {
            continue;
        }
        if (component == "..") {
            walked.resize(above == 0 ? 0 : walked.rfind('/'));
            continue;
        }
        walked.append("/").append(component);
        const ssize_t length =
            walked.size() < PATH_MAX ? readlink(walked.c_str(), target.data(), target.size()) : -1;
        // Anything but a symlink, missing entries and symlink loops stay as spelled.
        if (length <= 0 || ++links > kMostLinks) {
            continue;
        }
        const std::string_view text{target.data(), static_cast<std::size_t>(length)};
        walked.resize(text.starts_with('/') ? 0 : above);
        push(text);
    }
    return walked.empty() ? "/" : Platform::withoutPrivatePrefix(walked);
}

std::expected<std::string, Error> typed(std::string_view text) {
    if (!isUsable(text)) {
        return failure("An empty path names nothing.");
    }
    std::string_view rest = text;
    std::string path;  // Without trailing slash; empty for the root.
    if (text == "~" || text.starts_with("~/")) {
        path = StoragePaths::home();
        rest.remove_prefix(1);
    } else if (!text.starts_with('/')) {
        path = standardized(".");
    }
    path = path == "/" ? "" : path;
    const auto leadsNowhere = [&] {
        return failure(
            "\"" + std::string{text} + "\" leads through \"" + path + "\", which is not a folder.");
    };
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string_view component = rest.substr(0, end);
        const bool isLast = end == rest.size();
        rest.remove_prefix(isLast ? end : end + 1);
        const bool goesUp = component == "..";
        const bool staysHere = component.empty() || component == ".";
        if (!goesUp && !staysHere) {
            path.append("/").append(component);
            // A slash at the end asks for a folder, as "." does.
            if (isLast || !rest.empty()) {
                continue;
            }
        }
        if (path.empty() || (staysHere && !rest.empty())) {
            continue;
        }
        const mode_t kind = kindOf(path);
        if (kind == 0 && !goesUp) {
            continue;  // A missing path may be judged, too.
        }
        if (!isFolder(path)) {
            return leadsNowhere();
        }
        if (kind == S_IFLNK) {
            path = resolved(path);
        }
        if (goesUp) {
            path = parent(path);
        }
        path = path == "/" ? "" : path;
    }
    return path.empty() ? "/" : path;
}

}  // namespace Brimlo::Path
