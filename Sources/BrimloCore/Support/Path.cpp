#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

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

}  // namespace Brimlo::Path
