#include "BrimloCore/Catalog/ArtifactCatalog.h"

namespace Brimlo::ArtifactCatalog {

const std::vector<ArtifactPattern>& builtIn() {
    static const std::vector<ArtifactPattern> kPatterns{
        {
         .id = "artifact.node_modules",
         .name = "node_modules",
         .group = "Node.js projects",
         .personas = {Persona::developer},
         .risk = Risk::rebuild,
         .regenerates = "The package manager installs it again from the lockfile.",
         .names = {"node_modules"},
         .markers = {"package.json"},
         },
    };
    return kPatterns;
}

}  // namespace Brimlo::ArtifactCatalog
