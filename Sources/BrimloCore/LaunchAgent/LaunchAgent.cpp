#include "BrimloCore/LaunchAgent/LaunchAgent.h"

#include "BrimloCore/Platform/PeriodicJob.h"
#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <unistd.h>

namespace Brimlo::LaunchAgent {

namespace {

using Platform::PeriodicJob;

/// A longer file is not a definition of a job.
constexpr std::size_t kLongestFile = std::size_t{1} << 20U;

constexpr int kNoTool = 20;
constexpr int kUnfitPath = 21;

std::unexpected<Error> failure(int code, std::string description) {
    return std::unexpected(
        Error{.domain = kErrorDomain, .code = code, .description = std::move(description)});
}

PeriodicJob job() {
    return {std::string{kLabel}, StoragePaths::home()};
}

bool isExecutableFile(const std::string& path) {
    std::error_code error;
    // The system would resolve a relative path from another folder.
    return path.starts_with('/') && Path::isUsable(path) &&
           std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// Failures are ignored: without the command, or a service manager that answers it, the files take
/// effect at the next login.
void run(const std::vector<PeriodicJob::Command>& commands) {
    constexpr double kTimeoutSeconds = 30;
    for (const auto& words : commands) {
        static_cast<void>(Shell::run(
            words.front(), {words.begin() + 1, words.end()}, std::nullopt, kTimeoutSeconds));
    }
}

std::expected<void, Error> makeFolderOf(const std::string& path) {
    return Folders::create(std::string{Path::parent(path)}, Folders::Access::asUmaskAllows);
}

}  // namespace

std::string definitionPath() {
    return job().paths().front();
}

bool isInstalled() {
    std::error_code error;
    return std::filesystem::exists(definitionPath(), error);
}

std::optional<std::string> installedExecutable() {
    const auto text = readFile(definitionPath(), kLongestFile);
    return text ? PeriodicJob::program(*text) : std::nullopt;
}

std::expected<void, Error> install(const std::string& executable) {
    if (!isExecutableFile(executable)) {
        return failure(kNoTool, "Command line tool not found at " + executable);
    }
    const std::string log = StoragePaths::home() + "/Library/Logs/brimlo-autoclean.log";
    const auto files = job().files({
        .arguments = {executable, "autoclean", "--execute"},
        .intervalSeconds = kIntervalSeconds,
        .log = log,
    });
    if (!files) {
        return std::unexpected(files.error());
    }
    if (auto made = makeFolderOf(log); !made) {
        return made;
    }
    for (const auto& [path, text] : *files) {
        if (!Text::isValid(text)) {
            return failure(kUnfitPath, "A path is not valid text");
        }
        if (auto made = makeFolderOf(path); !made) {
            return made;
        }
    }
    run(job().commands(PeriodicJob::Moment::beforeChange));
    for (const auto& [path, text] : *files) {
        if (auto written = AtomicFile::write(path, text); !written) {
            return written;
        }
    }
    run(job().commands(PeriodicJob::Moment::afterWriting));
    return {};
}

void notify(const std::string& text) {
    run({PeriodicJob::notification(text)});
}

void uninstall() {
    run(job().commands(PeriodicJob::Moment::beforeChange));
    for (const std::string& path : job().paths()) {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    run(job().commands(PeriodicJob::Moment::afterRemoving));
}

}  // namespace Brimlo::LaunchAgent
