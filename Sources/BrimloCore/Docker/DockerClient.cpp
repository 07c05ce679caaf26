#include "BrimloCore/Docker/DockerClient.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Shell/Shell.h"
#include "BrimloCore/Support/Glob.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::DockerClient {

namespace {

/// The status of a tool that was killed.
constexpr int kWasKilled = -1;

/// Whether `path` is a file that this user may execute.
bool isProgram(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// Whether `path` exists, symlinks followed.
bool isThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

/// Why the daemon does not answer; nullopt when it does. Asks for its version, the shortest answer.
std::optional<std::string> reasonNotAnswering(const Places& places) {
    constexpr double kSeconds = 8;
    const auto info = run({"info", "--format", "{{.ServerVersion}}"}, kSeconds, places);
    if (info && info->status == 0) {
        return std::nullopt;
    }
    if (info && info->status == kWasKilled) {
        return "Docker does not answer: " + info->err + ".";
    }
    // The tool's untranslated message about a socket of another group.
    if (info && Text::lowercased(info->err).contains("permission denied")) {
        return "Docker refuses this user: permission denied.";
    }
    return "Docker is not running. Start Docker Desktop or OrbStack, then rescan.";
}

/// Adds the daemon's objects, or the error, to `snapshot`.
void readUsage(DockerSnapshot& snapshot, const Places& places) {
    constexpr double kSummarySeconds = 30;
    constexpr double kObjectSeconds = 60;  // Docker adds up the size of every layer and volume.
    const auto summary = run({"system", "df", "--format", "{{json .}}"}, kSummarySeconds, places);
    if (summary) {
        snapshot.summary = parseSummary(summary->out);
    }
    const auto usage = run({"system", "df", "-v", "--format", "json"}, kObjectSeconds, places);
    if (!usage || usage->status != 0) {
        snapshot.error = usage && usage->status == kWasKilled
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

constexpr double kRemovalSeconds = 120;

/// Docker Desktop's disk file does not shrink when an object is removed.
std::string closingNote(const std::vector<DockerVMDisk>& disks) {
    const bool isDesktop =
        std::ranges::find(disks, "Docker Desktop", &DockerVMDisk::runtime) != disks.end();
    return isDesktop ? " Removed permanently through Docker; Docker Desktop's disk file only "
                       "shrinks after a Docker restart."
                     : " Removed permanently through Docker (no Trash).";
}

/// Whether removing the objects loses nothing, so that they start ticked.
bool isPreselected(DockerCategory category) {
    return category == DockerCategory::danglingImages || category == DockerCategory::buildCache;
}

Suggestion suggestion(
    DockerCategory category, const std::vector<DockerObject>& objects, const std::string& note) {
    Suggestion suggestion{
        .id = std::string{ruleID(category)},
        .name = "Docker: " + std::string{title(category)},
        .group = "Docker",
        .personas = {Persona::developer},
        .risk = risk(category),
        .regenerates = std::string{regenerates(category)} + note,
    };
    for (const DockerObject& object : objects) {
        suggestion.items.push_back({
            .path = object.pseudoPath(),
            .size = object.size,
            .idleDays = std::nullopt,
            .detail = object.title,
            .subtitle = object.detail,
        });
        if (isPreselected(category)) {
            suggestion.preselectedPaths.insert(object.pseudoPath());
        }
    }
    return suggestion;
}

/// The parts of a pseudo path. The id may contain colons.
struct Target {
    std::string_view kind;
    std::string id;
};

/// Cuts the next piece off `text`, and the separators before it.
std::string_view cutPiece(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(':'), text.size()));
    const std::string_view piece = text.substr(0, text.find(':'));
    text.remove_prefix(piece.size());
    return piece;
}

std::optional<Target> target(std::string_view pseudoPath) {
    const std::string_view scheme = cutPiece(pseudoPath);
    const std::string_view kind = cutPiece(pseudoPath);
    pseudoPath.remove_prefix(std::min<std::size_t>(1, pseudoPath.size()));
    // No object's name starts with "-", and Docker would read it as an option.
    if (scheme != "docker" || pseudoPath.empty() || pseudoPath.starts_with('-')) {
        return std::nullopt;
    }
    return Target{kind, std::string{pseudoPath}};
}

/// The arguments that remove `target`, without force, so that Docker refuses when it is in use.
std::vector<std::string> removal(const Target& target) {
    if (target.kind == "image") {
        return {"rmi", target.id};
    }
    if (target.kind == "container") {
        return {"rm", target.id};
    }
    if (target.kind == "volume") {
        return {"volume", "rm", target.id};
    }
    if (target.kind == "buildcache") {
        return {"builder", "prune", "-a", "-f"};
    }
    return {};
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
    const auto ending = Shell::run({
        .executable = *tool,
        .arguments = arguments,
        .cwd = std::nullopt,
        .timeoutSeconds = timeoutSeconds,
        .standardError = Shell::StandardError::keep,
    });
    if (!ending) {
        return std::nullopt;
    }
    if (ending->cut != Shell::Cut::none) {
        const bool isTime = ending->cut == Shell::Cut::time;
        return Result{kWasKilled, "", isTime ? "Docker took too long" : "Docker printed too much"};
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
    // The disks take space even when the daemon is not running.
    snapshot.vmDisks = vmDisks();
    snapshot.error = reasonNotAnswering(places);
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
            struct stat status{};
            if (stat(path.c_str(), &status) == 0) {
                disks.push_back(
                    {path, status.st_blocks * Platform::kBlockBytes, status.st_size, kind.runtime});
            }
        }
    }
    return disks;
}

std::vector<Suggestion> suggestions(const DockerSnapshot& snapshot) {
    const std::string note = closingNote(snapshot.vmDisks);
    std::vector<Suggestion> suggestions;
    for (const DockerCategory category : kAllDockerCategories) {
        if (snapshot.totalIn(category) >= 1) {
            suggestions.push_back(suggestion(category, snapshot.objectsIn(category), note));
        }
    }
    return suggestions;
}

std::optional<std::string> remove(std::string_view pseudoPath, const Places& places) {
    const std::optional<Target> what = target(pseudoPath);
    if (!what) {
        return "not a Docker item";
    }
    const std::vector<std::string> arguments = removal(*what);
    if (arguments.empty()) {
        return "unknown Docker item kind";
    }
    const auto result = run(arguments, kRemovalSeconds, places);
    if (!result) {
        return "Docker CLI unavailable";
    }
    if (result->status == 0) {
        return std::nullopt;
    }
    std::string reason = result->err;
    // The image has several tags; only with force does Docker remove all of them.
    if (what->kind == "image" && reason.contains("multiple repositories")) {
        const auto forced = run({"rmi", "-f", what->id}, kRemovalSeconds, places);
        if (forced && forced->status == 0) {
            return std::nullopt;
        }
        reason = forced ? forced->err : reason;
    }
    const std::string_view words = Text::stripped(reason);
    return words.empty() ? "Docker refused and gave no reason" : std::string{words};
}

}  // namespace Brimlo::DockerClient
