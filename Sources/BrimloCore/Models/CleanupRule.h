#pragma once

#include "BrimloCore/Models/Confidence.h"
#include "BrimloCore/Models/Persona.h"
#include "BrimloCore/Models/Risk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// A rule of the catalog: places that can be cleaned, how risky that is, and what comes back.
///
/// Identified by `id`.
struct CleanupRule {
    std::string id;     ///< Stable dotted words, for example "general.app-caches".
    std::string name;   ///< The title shown.
    std::string group;  ///< Its heading: the tool.
    std::vector<Persona> personas;
    Risk risk = Risk::review;
    std::vector<std::string> paths;              ///< Path patterns; "~" stands for the home folder.
    std::string regenerates;                     ///< What happens after removal, in a sentence.
    std::optional<std::string> officialCommand;  ///< The vendor's own command for this cleanup.
    std::vector<std::string> quitApps;           ///< Apps to close first, by display name.
    bool contentsOnly = false;          ///< The children of each path are removed, not the path.
    std::vector<std::string> excludes;  ///< Wildcards for child names, with `contentsOnly`.
    std::optional<std::int64_t> minAgeDays;  ///< More recently modified entries are skipped.
    bool isCatchAll = false;                 ///< A broad rule that yields to specific ones.
    std::optional<std::string> domain;       ///< The tool family in the coverage report.
    Confidence confidence = Confidence::documented;
    bool isUsersOwn = false;           ///< Its origin: set by the catalog, never by a file.
    std::vector<std::string> sources;  ///< Web addresses of its evidence.

    bool operator==(const CleanupRule&) const = default;
};

}  // namespace Brimlo
