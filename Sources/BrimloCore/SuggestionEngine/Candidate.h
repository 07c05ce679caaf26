#pragma once

#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// A suggestion in the making: one for each rule or pattern that found anything.
struct Meta {
    std::string id;
    std::string name;
    std::string group;
    std::vector<Persona> personas;
    Risk risk = Risk::review;
    std::string regenerates;
    std::optional<std::string> command;
    std::vector<std::string> openApps;
    bool isUsersOwn = false;
    bool isArtifact = false;
    bool catchAll = false;
};

/// A path that may become an item of a suggestion.
struct Candidate {
    std::size_t meta = 0;  ///< Index into the list of `Meta`.
    SuggestionItem item;   ///< Not yet measured.
    /// The canonical name of the item's place; its path where that is its only name. Candidates are
    /// compared by it.
    std::string place = {};
};

}  // namespace Brimlo
