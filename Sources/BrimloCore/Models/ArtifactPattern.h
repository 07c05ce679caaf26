#pragma once

#include "BrimloCore/Models/CleanupRule.h"

#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// A rule for build output inside projects instead of fixed paths.
///
/// Identified by `id`.
struct ArtifactPattern {
    std::string id;  ///< Stable dotted words, for example "artifact.node_modules".
    std::string name;
    std::string group;
    std::vector<Persona> personas;
    Risk risk = Risk::review;
    std::string regenerates;
    std::optional<std::string> officialCommand;  ///< The rebuild command.
    std::vector<std::string> names;              ///< Folder names; one with a star is a wildcard.
    std::vector<std::string> suffixes;           ///< Suffixes of folder names.
    std::vector<std::string>
        markers;  ///< Wildcards for siblings that prove a project; empty: none needed.
    std::vector<std::string> excludes;  ///< Wildcards for names that are never matched.
    /// Names of which one must lie in the folder, as a file or a folder; empty: none needed. A
    /// CACHEDIR.TAG must also bear its signature.
    std::vector<std::string> proofs;
    std::vector<std::string> disproofs;  ///< Wildcards for names that must not lie in it.
    std::vector<Experiment> provenOn;    ///< The experiments that prove it.

    bool operator==(const ArtifactPattern&) const = default;
};

}  // namespace Brimlo
