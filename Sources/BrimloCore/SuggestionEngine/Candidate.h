#pragma once

#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo {

/// What a suggestion will say: one for each rule or pattern that found anything.
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

/// A path on its way into a suggestion.
struct Candidate {
    std::size_t meta = 0;  ///< Its place in the list of `Meta`.
    SuggestionItem item;   ///< Not yet measured.
    /// The one name of where the item lies; its path where that has no other name. Candidates are
    /// compared by it.
    std::string place = {};
};

}  // namespace Brimlo
