#include "BrimloCore/Support/RealPath.h"

#include "BrimloCore/Platform/PrivatePrefix.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::RealPath {

namespace {

/// What is at a path, a link's own.
mode_t kindOf(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::unexpected<Error> failure(std::string sentence) {
    return std::unexpected(Error{.domain = kErrorDomain, .description = std::move(sentence)});
}

}  // namespace

std::string of(std::string_view path) {
    constexpr int kMostLinks = 64;
    // Components still to walk, the next one last. A link puts its target's in its own place.
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

    std::string resolved;  // Without a slash at its end: empty is the root.
    int links = 0;
    while (!pending.empty()) {
        const std::string component = std::move(pending.back());
        pending.pop_back();
        const std::size_t above = resolved.size();
        if (component == ".") {
            continue;
        }
        if (component == "..") {
            resolved.resize(above == 0 ? 0 : resolved.rfind('/'));
            continue;
        }
        resolved.append("/").append(component);
        std::array<char, PATH_MAX> target{};
        const ssize_t length = resolved.size() < PATH_MAX
                                   ? readlink(resolved.c_str(), target.data(), target.size())
                                   : -1;
        // What is no link, is missing or turns in circles stays as it is spelled.
        if (length <= 0 || ++links > kMostLinks) {
            continue;
        }
        const std::string_view text{target.data(), static_cast<std::size_t>(length)};
        resolved.resize(text.starts_with('/') ? 0 : above);
        push(text);
    }
    return resolved.empty() ? "/" : Platform::withoutPrivatePrefix(resolved);
}

std::expected<std::string, Error> typed(std::string_view text) {
    if (!Path::isUsable(text)) {
        return failure("An empty path names nothing.");
    }
    std::string_view rest = text;
    std::string path;  // Without a slash at its end: empty is the root.
    if (text == "~" || text.starts_with("~/")) {
        path = StoragePaths::home();
        rest.remove_prefix(1);
    } else if (!text.starts_with('/')) {
        path = Path::standardized(".");
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
            continue;  // May be judged, though nothing is there.
        }
        if (!isFolder(path)) {
            return leadsNowhere();
        }
        if (kind == S_IFLNK) {
            path = of(path);
        }
        if (goesUp) {
            path = Path::parent(path);
        }
        path = path == "/" ? "" : path;
    }
    return path.empty() ? "/" : path;
}

}  // namespace Brimlo::RealPath
