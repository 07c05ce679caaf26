#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Support/Text.h"

#include <algorithm>
#include <cstddef>

namespace Brimlo::DockerClient {

namespace {

constexpr double kRemovalSeconds = 120;

/// Docker Desktop's disk is a file that does not shrink when something in it goes.
std::string closingNote(const std::vector<DockerVMDisk>& disks) {
    const bool isDesktop =
        std::ranges::find(disks, "Docker Desktop", &DockerVMDisk::runtime) != disks.end();
    return isDesktop ? " Removed permanently through Docker; Docker Desktop's disk file only "
                       "shrinks after a Docker restart."
                     : " Removed permanently through Docker (no Trash).";
}

/// Whether nothing can be lost with the objects, so that they start ticked.
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

/// A pseudo path in its pieces. The id may hold colons of its own.
struct Target {
    std::string_view kind;
    std::string id;
};

/// The next piece of `text`, which it is taken from, without the separators before it.
std::string_view takePiece(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(':'), text.size()));
    const std::string_view piece = text.substr(0, text.find(':'));
    text.remove_prefix(piece.size());
    return piece;
}

std::optional<Target> target(std::string_view pseudoPath) {
    const std::string_view scheme = takePiece(pseudoPath);
    const std::string_view kind = takePiece(pseudoPath);
    pseudoPath.remove_prefix(std::min<std::size_t>(1, pseudoPath.size()));
    // No object is called like an option, and Docker would take it for one.
    if (scheme != "docker" || pseudoPath.empty() || pseudoPath.starts_with('-')) {
        return std::nullopt;
    }
    return Target{kind, std::string{pseudoPath}};
}

/// The arguments that remove it, without force: Docker is to refuse what is in use.
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
    // The image has several names, and Docker wants to hear that all of them are meant.
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
