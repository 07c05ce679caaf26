#include "BrimloApp/Settings/CLIInstaller.h"

#include "BrimloApp/Platform/Desktop.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include <unistd.h>

namespace Brimlo::CLIInstaller {

namespace {

/// Quotes one word for the shell. Between apostrophes only the apostrophe is special.
std::string shellWord(std::string_view text) {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? std::string{R"('\'')"} : std::string{c};
    }
    return word + '\'';
}

bool isProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// The program that a terminal starts for "brimlo".
std::optional<std::string> firstOn(std::string_view searchPath) {
    while (!searchPath.empty()) {
        const std::string_view folder = searchPath.substr(0, searchPath.find(':'));
        searchPath.remove_prefix(std::min(folder.size() + 1, searchPath.size()));
        std::string program = Path::join(folder, "brimlo");
        if (folder.starts_with('/') && isProgram(program)) {
            return program;
        }
    }
    return std::nullopt;
}

}  // namespace

Places usualPlaces() {
    const char* path = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe): set at start only
    return {
        Desktop::resourceFolder(),
        kLinkPath,
        Platform::usualAuthorizers(),
        path != nullptr ? path : ""};
}

std::optional<std::string> bundledCLI(const Places& places) {
    const std::string tool = Path::join(places.resources, "brimlo");
    return isProgram(tool) ? std::optional{tool} : std::nullopt;
}

std::optional<std::string> installedAt(const Places& places) {
    const auto tool = bundledCLI(places);
    std::error_code error;
    if (!tool || std::filesystem::read_symlink(places.link, error).native() == *tool) {
        return tool ? std::optional{places.link} : std::nullopt;
    }
    const auto found = firstOn(places.searchPath);
    return found && std::filesystem::equivalent(*found, *tool, error) ? found : std::nullopt;
}

Result install(const Places& places) {
    const auto tool = bundledCLI(places);
    if (!tool || installedAt(places)) {
        return {tool ? Outcome::alreadyInstalled : Outcome::noTool, ""};
    }
    Result notMade{Outcome::failed, "symlink was not created"};
    std::error_code error;
    if (std::filesystem::is_directory(places.link, error)) {
        return notMade;  // `ln` would make the link inside it, with all rights.
    }
    const auto run = Platform::runAsAdministrator(
        "mkdir -p " + shellWord(Path::parent(places.link)) + " && ln -sf " + shellWord(*tool) +
            ' ' + shellWord(places.link),
        places.authorizers);
    using Run = Platform::PrivilegedRun::Outcome;
    if (run.outcome != Run::done) {
        return {run.outcome == Run::cancelled ? Outcome::cancelled : Outcome::failed, run.text};
    }
    return installedAt(places) ? Result{Outcome::installed, ""} : notMade;
}

}  // namespace Brimlo::CLIInstaller
