#include "BrimloCore/Docker/DockerSnapshot.h"

#include "BrimloCore/Models/Bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>

namespace Brimlo {

namespace {

struct Row {
    std::string_view rawValue;
    std::string_view ruleID;
    std::string_view title;
    Risk risk;
    std::string_view regenerates;
};

// In the order of the enumeration.
constexpr std::array<Row, kAllDockerCategories.size()> kRows{
    {
     {.rawValue = "danglingImages",
         .ruleID = "docker.images-dangling",
         .title = "Dangling images",
         .risk = Risk::safe,
         .regenerates = "Untagged leftovers from rebuilds. Nothing refers to them."},
     {.rawValue = "unusedImages",
         .ruleID = "docker.images-unused",
         .title = "Unused images",
         .risk = Risk::rebuild,
         .regenerates =
             "Tagged images no container uses. `docker pull` or a rebuild brings them back."},
     {.rawValue = "stoppedContainers",
         .ruleID = "docker.containers-stopped",
         .title = "Stopped containers",
         .risk = Risk::rebuild,
         .regenerates = "Exited containers. Their writable layer is lost, but the image and any "
                        "volumes are kept."},
     {.rawValue = "orphanVolumes",
         .ruleID = "docker.volumes-orphan",
         .title = "Orphaned volumes",
         .risk = Risk::review,
         .regenerates =
             "Volumes no container uses. They may hold database or app data and cannot be "
             "restored once removed."},
     {.rawValue = "buildCache",
         .ruleID = "docker.build-cache",
         .title = "Build cache",
         .risk = Risk::safe,
         .regenerates = "BuildKit layer cache not used by a running build. Rebuilt on the next "
                        "`docker build`."},
     }
};

const Row& row(DockerCategory category) {
    return kRows.at(static_cast<std::size_t>(category));
}

/// The pseudo path of the whole build cache.
constexpr std::string_view kBuildCache = "docker:buildcache:all";

}  // namespace

std::string_view rawValue(DockerCategory category) {
    return row(category).rawValue;
}

std::string_view ruleID(DockerCategory category) {
    return row(category).ruleID;
}

std::string_view title(DockerCategory category) {
    return row(category).title;
}

Risk risk(DockerCategory category) {
    return row(category).risk;
}

std::string_view regenerates(DockerCategory category) {
    return row(category).regenerates;
}

std::string DockerObject::pseudoPath() const {
    if (kind == Kind::buildCache) {
        return std::string{kBuildCache};
    }
    return "docker:" + std::string{rawValue(kind)} + ":" + dockerID;
}

std::string DockerObject::words(std::string_view pseudoPath, std::string_view title) {
    constexpr std::size_t kHash = 64;
    constexpr std::size_t kShown = 12;
    if (pseudoPath == kBuildCache) {
        return "Docker build cache";
    }
    const std::string_view object = pseudoPath.substr(pseudoPath.find(':') + 1);
    const auto kind = object.substr(0, object.find(':'));
    std::string_view id = object.substr(std::min(kind.size() + 1, object.size()));
    if (id.starts_with("sha256:")) {
        id.remove_prefix(id.find(':') + 1);
    }
    if (id.size() == kHash && id.find_first_not_of("0123456789abcdef") == std::string_view::npos) {
        id = id.substr(0, kShown);
    }
    const std::string start = "Docker " + std::string{kind} + " ";
    // Docker's name of a volume, and the title of an untagged image, have the id in them already.
    if (title.ends_with(id)) {
        return start + std::string{title};
    }
    return title.empty() ? start + std::string{id}
                         : start + std::string{title} + " (" + std::string{id} + ")";
}

std::string_view rawValue(DockerObject::Kind kind) {
    constexpr std::array<std::string_view, 4> kWords{"image", "container", "volume", "buildCache"};
    return kWords.at(static_cast<std::size_t>(kind));
}

std::vector<DockerObject> DockerSnapshot::objectsIn(DockerCategory category) const {
    std::vector<DockerObject> found;
    std::ranges::copy_if(objects, std::back_inserter(found), [&](const DockerObject& object) {
        return object.category == category;
    });
    std::ranges::stable_sort(found, std::ranges::greater{}, &DockerObject::size);
    return found;
}

std::int64_t DockerSnapshot::totalIn(DockerCategory category) const {
    return Bytes::total(objects, [&](const DockerObject& object) {
        return object.category == category ? object.size : 0;
    });
}

std::int64_t DockerSnapshot::reclaimableTotal() const {
    return Bytes::total(objects, &DockerObject::size);
}

}  // namespace Brimlo
