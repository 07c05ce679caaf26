#include "BrimloApp/CLIInstaller.h"

#include "BrimloApp/Platform/Bundle.h"
#include "BrimloCore/Support/Path.h"

#include <filesystem>

#include <unistd.h>

namespace Brimlo::CLIInstaller {
namespace {

/// One word for the shell: nothing but the apostrophe means anything within apostrophes.
std::string shellWord(std::string_view text) {
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? std::string{R"('\'')"} : std::string{c};
    }
    return word + '\'';
}

}  // namespace

Places usualPlaces() {
    return {Platform::resourceFolder(), kLinkPath, Platform::usualAuthorizers()};
}

std::optional<std::string> bundledCLI(const Places& places) {
    const std::string tool = Path::join(places.resources, "brimlo");
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(tool, error);
    return isFile && access(tool.c_str(), X_OK) == 0 ? std::optional{tool} : std::nullopt;
}

bool isInstalled(const Places& places) {
    const auto tool = bundledCLI(places);
    std::error_code error;
    return tool && std::filesystem::read_symlink(places.link, error).native() == *tool;
}

Result install(const Places& places) {
    const auto tool = bundledCLI(places);
    if (!tool || isInstalled(places)) {
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
    return isInstalled(places) ? Result{Outcome::installed, ""} : notMade;
}

}  // namespace Brimlo::CLIInstaller
