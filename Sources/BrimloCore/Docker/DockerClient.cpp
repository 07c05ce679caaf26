#include "BrimloCore/Docker/DockerClient.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Shell/ChildProcess.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::DockerClient {

namespace {

/// The status of a tool that was made to end.
constexpr int kWasEnded = -1;

/// Whether the path names a file that this user may run.
bool isProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// Whether something is at the path, links followed.
bool isThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

/// Why the daemon does not answer; nothing when it does. Its version is asked for since that is
/// little to print.
std::optional<std::string> silence(const Places& places) {
    constexpr double kSeconds = 8;
    const auto info = run({"info", "--format", "{{.ServerVersion}}"}, kSeconds, places);
    if (info && info->status == 0) {
        return std::nullopt;
    }
    if (info && info->status == kWasEnded) {
        return "Docker does not answer: " + info->err + ".";
    }
    // So says the tool, in one language, of a socket that is another group's.
    if (info && Text::lowercased(info->err).contains("permission denied")) {
        return "Docker refuses this user: permission denied.";
    }
    return "Docker is not running. Start Docker Desktop or OrbStack, then rescan.";
}

/// Fills in what the daemon tells of its objects.
void readUsage(DockerSnapshot& snapshot, const Places& places) {
    constexpr double kSummarySeconds = 30;
    constexpr double kObjectSeconds = 60;  // It adds up the size of every layer and volume.
    const auto summary = run({"system", "df", "--format", "{{json .}}"}, kSummarySeconds, places);
    if (summary) {
        snapshot.summary = parseSummary(summary->out);
    }
    const auto usage = run({"system", "df", "-v", "--format", "json"}, kObjectSeconds, places);
    if (!usage || usage->status != 0) {
        snapshot.error = usage && usage->status == kWasEnded
                             ? "Could not read Docker usage: " + usage->err + "."
                             : "Could not read Docker usage (needs Docker 25 or newer).";
        return;
    }
    auto objects = parseObjects(usage->out, isThere);
    if (objects) {
        snapshot.objects = std::move(*objects);
    } else {
        snapshot.error = "Unexpected Docker output: " + objects.error().description;
    }
}

}  // namespace

Places usualPlaces() {
    Places places{
        "/usr/local/bin/docker",
        "/opt/homebrew/bin/docker",
        StoragePaths::home() + "/.orbstack/bin/docker",
        "/Applications/Docker.app/Contents/Resources/bin/docker",
    };
    std::ranges::move(Platform::systemToolPaths("docker"), std::back_inserter(places));
    return places;
}

std::optional<std::string> binary(const Places& places) {
    const auto found = std::ranges::find_if(places, isProgram);
    return found == places.end() ? std::nullopt : std::optional{*found};
}

std::optional<Result> run(
    const std::vector<std::string>& arguments, double timeoutSeconds, const Places& places) {
    const std::optional<std::string> tool = binary(places);
    if (!tool) {
        return std::nullopt;
    }
    const auto ending = ChildProcess::run({
        .executable = *tool,
        .arguments = arguments,
        .cwd = std::nullopt,
        .timeoutSeconds = timeoutSeconds,
        .standardError = ChildProcess::StandardError::keep,
    });
    if (!ending) {
        return std::nullopt;
    }
    if (ending->cut != ChildProcess::Cut::none) {
        const bool isTime = ending->cut == ChildProcess::Cut::time;
        return Result{kWasEnded, "", isTime ? "Docker took too long" : "Docker printed too much"};
    }
    return Result{ending->code, Text::repaired(ending->out), Text::repaired(ending->err)};
}

DockerSnapshot snapshot(const Places& places) {
    constexpr double kContextSeconds = 5;
    DockerSnapshot snapshot;
    if (!binary(places)) {
        snapshot.error = "Docker CLI not found.";
        return snapshot;
    }
    const auto context = run({"context", "show"}, kContextSeconds, places);
    if (context && context->status == 0 && !Text::stripped(context->out).empty()) {
        snapshot.context = Text::stripped(context->out);
    }
    // The disks take their space whether the daemon runs or not.
    snapshot.vmDisks = vmDisks();
    snapshot.error = silence(places);
    snapshot.available = !snapshot.error;
    if (snapshot.available) {
        readUsage(snapshot, places);
    }
    return snapshot;
}

std::vector<DockerVMDisk> vmDisks() {
    const struct {
        const char* glob;
        const char* runtime;
    } kinds[] = {
        {"~/Library/Containers/com.docker.docker/Data/vms/*/data/Docker.raw", "Docker Desktop"},
        {"~/Library/Group Containers/*.dev.orbstack/data/*.img",              "OrbStack"      },
        {"~/.orbstack/data/*.img",                                            "OrbStack"      },
    };
    std::vector<DockerVMDisk> disks;
    for (const auto& kind : kinds) {
        for (const std::string& path : Glob::expand(kind.glob)) {
            struct stat status {};
            if (stat(path.c_str(), &status) == 0) {
                disks.push_back(
                    {path, status.st_blocks * Platform::kBlockBytes, status.st_size, kind.runtime});
            }
        }
    }
    return disks;
}

}  // namespace Brimlo::DockerClient
