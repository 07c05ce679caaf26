#pragma once

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Models/CleanupRule.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

struct SharedSpace;
/// The files of a place of which something may stay when the place goes: they have names outside it
/// or share blocks. Null if there are none. Held by all copies of an item, since they can be many.
using SharedFiles = std::shared_ptr<const SharedSpace>;

/// One item that can be cleaned. Identified by `path`.
struct SuggestionItem {
    std::string path;       ///< Absolute, or a "docker:" pseudo path.
    std::int64_t size = 0;  ///< Allocated bytes.
    std::optional<std::int64_t>
        idleDays;                       ///< Days since the entry's or the project's last activity.
    std::optional<std::string> detail;  ///< For artifacts: the project's folder name.
    std::optional<std::string> subtitle;  ///< A line under the path.
    SharedFiles shared = nullptr;         ///< What of it may stay when it goes.

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
    std::vector<std::string> places;   ///< What the rule looks at: path patterns or folder names.
    std::vector<std::string> sources;  ///< Web addresses of the rule's evidence.
    std::string evidence;              ///< A sentence: how far the rule is proven on this system.
    std::vector<std::string> runningApps;  ///< The `quitApps` running now, as the rule spells them.
    std::vector<SuggestionItem> items;     ///< Sorted by size, largest first.
    std::set<std::string> preselectedPaths;  ///< The items ticked at first.

    bool operator==(const Suggestion&) const = default;

    /// The sum of the items' sizes in bytes.
    [[nodiscard]] std::int64_t totalSize() const {
        return Bytes::total(items, &SuggestionItem::size);
    }
};

/// One reason for a suggestion.
struct Reason {
    std::string
        label;  ///< "Rule", "Looks at", "Source", "Evidence", "Safety gate" or "Its own command".
    std::string text;

    bool operator==(const Reason&) const = default;
};

/// Why a suggestion is made: its rule, the places and the evidence of the rule, what the safety
/// gate said, and the tool's own command. In this order, each as often as there is one.
[[nodiscard]] std::vector<Reason> reasons(const Suggestion& suggestion);

}  // namespace Brimlo
