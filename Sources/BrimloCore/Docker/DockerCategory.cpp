#include "BrimloCore/Docker/DockerCategory.h"

#include <cstddef>

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

}  // namespace Brimlo
