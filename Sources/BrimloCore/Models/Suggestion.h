#pragma once

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// One item that can be cleaned. Identified by `path`.
struct SuggestionItem {
    std::string path;       ///< Absolute, or a "docker:" pseudo path.
    std::int64_t size = 0;  ///< Allocated bytes.
    std::optional<std::int64_t>
        idleDays;                       ///< Days since the entry's or the project's last activity.
    std::optional<std::string> detail;  ///< For artifacts: the project's folder name.
    std::optional<std::string> subtitle;  ///< A line under the path.

    bool operator==(const SuggestionItem&) const = default;
};

/// The findings of one rule or pattern.
struct Suggestion {
    std::string id;  ///< The rule's or pattern's id.
    std::string name;
    std::string group;
    std::vector<Persona> personas;
    Risk risk = Risk::review;
    bool isUsersOwn = false;  ///< From a rule of the user's, whatever its id.
    std::string regenerates;
    std::optional<std::string> officialCommand;
    std::vector<std::string> runningApps;  ///< The `quitApps` running now, as the rule spells them.
    std::vector<SuggestionItem> items;     ///< Sorted by size, largest first.
    std::set<std::string> preselectedPaths;  ///< The items ticked at first.

    bool operator==(const Suggestion&) const = default;

    /// The sum of the items' sizes in bytes.
    [[nodiscard]] std::int64_t totalSize() const {
        return Bytes::total(items, &SuggestionItem::size);
    }
};

}  // namespace Brimlo
