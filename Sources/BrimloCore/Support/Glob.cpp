#include "BrimloCore/Support/Glob.h"

#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fnmatch.h>
#include <sys/stat.h>

namespace Brimlo::Glob {

namespace {

constexpr std::string_view kWildcards = "*?[";

Pattern::Component parseComponent(std::string_view text) {
    Pattern::Component component;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
        } else if (kWildcards.contains(text[i])) {
            return {std::string{text}, true};
        }
        component.text += text[i];
    }
    return component;
}

bool exists(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0;
}

bool isFolder(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Appends the entries of `folder` that a component matches.
void appendEntries(
    const std::string& folder,
    const Pattern::Component& component,
    std::vector<std::string>& paths) {
    if (!component.isWild) {
        if (std::string path = Path::join(folder, component.text); exists(path)) {
            paths.push_back(std::move(path));
        }
        return;
    }
    for (const std::string& name : Folders::names(folder).value_or(std::vector<std::string>{})) {
        if (fnmatch(component.text.c_str(), name.c_str(), FNM_PERIOD) == 0) {
            paths.push_back(Path::join(folder, name));
        }
    }
}

}  // namespace

Pattern parse(std::string_view path) {
    Pattern pattern;
    const std::string home = StoragePaths::home();
    const bool hasTilde = path == "~" || path.starts_with("~/");
    const bool isInHome = hasTilde || (home != "/" && Path::below(home, path));
    if (isInHome) {
        pattern.fixed = home;
        path.remove_prefix(hasTilde ? 1 : home.size());
    }
    const bool isAbsolute = isInHome || path.starts_with('/');
    if (!isAbsolute || path.find_first_of(kWildcards) == std::string_view::npos) {
        pattern.fixed += path;
        pattern.goesUp = ("/" + std::string{path} + "/").contains("/../");
        return pattern;
    }
    if (pattern.fixed == "/") {
        pattern.fixed.clear();
    }
    pattern.foldersOnly = path.ends_with('/');
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        Pattern::Component component = parseComponent(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
        if (component.text.empty() || component.text == ".") {
            continue;
        }
        pattern.goesUp = pattern.goesUp || component.text == "..";
        if (component.isWild || !pattern.rest.empty()) {
            pattern.rest.push_back(std::move(component));
        } else {
            pattern.fixed.append("/").append(component.text);
        }
    }
    pattern.fixed = pattern.fixed.empty() ? "/" : pattern.fixed;
    return pattern;
}

std::vector<std::string> expand(const Pattern& pattern) {
    if (!pattern.fixed.starts_with('/') || pattern.goesUp || !Path::isUsable(pattern.fixed) ||
        !exists(pattern.fixed)) {
        return {};
    }
    std::vector<std::string> paths{pattern.fixed};
    for (const Pattern::Component& component : pattern.rest) {
        if (!Path::isUsable(component.text)) {
            return {};
        }
        std::vector<std::string> inside;
        for (const std::string& path : paths) {
            appendEntries(path, component, inside);
        }
        paths = std::move(inside);
    }
    if (pattern.foldersOnly) {
        std::erase_if(paths, [](const std::string& path) { return !isFolder(path); });
    }
    return paths;
}

std::vector<std::string> expand(std::string_view path) {
    return expand(parse(path));
}

bool matches(const std::string& name, const std::string& pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

}  // namespace Brimlo::Glob
