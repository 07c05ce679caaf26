#include "BrimloCore/Shell/CoverageChecker.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Shell/GitCoverage.h"
#include "BrimloCore/Shell/TimeMachine.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <system_error>

#include <unistd.h>

namespace Brimlo::CoverageChecker {

namespace {

constexpr const char* kTmutil = "/usr/bin/tmutil";

bool isProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> findGit() {
    // The one in the system's own place is missing: where no developer tools are installed, macOS
    // has a stand-in there that opens a window to install them.
    std::vector<std::string> places{
        "/opt/homebrew/bin/git",
        "/usr/local/bin/git",
        "/Library/Developer/CommandLineTools/usr/bin/git",
        "/Applications/Xcode.app/Contents/Developer/usr/bin/git",
    };
    std::ranges::move(Platform::systemToolPaths("git"), std::back_inserter(places));
    const auto place = std::ranges::find_if(places, isProgram);
    return place == places.end() ? std::nullopt : std::optional{*place};
}

const std::optional<std::string>& gitPath() {
    static const std::optional<std::string> kPath = findGit();
    return kPath;
}

std::optional<std::chrono::sys_seconds> latestTimeMachineBackup() {
    static const std::optional<std::chrono::sys_seconds> kTime = TimeMachine::latestBackup(kTmutil);
    return kTime;
}

}  // namespace

std::vector<std::string> covered(const std::string& path) {
    std::vector<std::string> sentences;
    for (auto& sentence : {gitCoverage(path), timeMachineCoverage(path)}) {
        if (sentence) {
            sentences.push_back(*sentence);
        }
    }
    return sentences;
}

std::vector<std::string> warnings(std::string_view path) {
    constexpr std::array kFolders{
        "/Library/Mobile Documents",
        "/Library/CloudStorage",
        "/Dropbox",
        "/Google Drive",
        "/OneDrive",
    };
    const std::string home = StoragePaths::home();
    const auto holds = [&](const char* folder) {
        return Path::below(home + folder, path).has_value();
    };
    if (std::ranges::any_of(kFolders, holds)) {
        return {"synced folder: deleting also removes the cloud copy"};
    }
    return {};
}

std::optional<std::string> gitCoverage(const std::string& path) {
    return gitPath() ? GitCoverage::sentence(*gitPath(), path) : std::nullopt;
}

std::optional<std::string> timeMachineCoverage(const std::string& path) {
    const auto backup = latestTimeMachineBackup();
    return backup ? TimeMachine::sentence(kTmutil, path, *backup) : std::nullopt;
}

}  // namespace Brimlo::CoverageChecker
