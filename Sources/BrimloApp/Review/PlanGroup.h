#pragma once

#include "BrimloCore/Cleaner/CleanPlan.h"
#include "BrimloCore/Cleaner/CleanReport.h"
#include "BrimloCore/Models/Suggestion.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// One item of a plan, or the many of one rule in one folder that share a fate, described by its
/// suggestion.
struct PlanLine {
    /// What becomes of it, in the order of the list. What stays would be refused.
    enum class Fate : std::uint8_t { trash, forGood, stays };

    std::string path;
    std::string title;     ///< The name of the suggestion or of Docker's object; else the path.
    std::string subtitle;  ///< Empty if the title is the path of no extra copy.
    std::string reason;    ///< Why it stays; else empty.
    std::int64_t size = 0;
    SharedFiles shared;          ///< What of the item may stay.
    std::int64_t itemCount = 0;  ///< Of a folder of many items; else 0.
    Fate fate = Fate::trash;
    bool expanded = false;    ///< Whether the items of the folder follow.
    bool isInFolder = false;  ///< Whether it follows the row of its folder.
    bool mayBeOwn = false;    ///< Whether it may hold the user's own files, by its rating.
    std::size_t group = 0;    ///< The place of its group.
    std::size_t item = 0;     ///< Its place in the group.

    bool operator==(const PlanLine&) const = default;

    /// Several rules may have many items in one folder.
    [[nodiscard]] std::string key() const {
        return itemCount > 0 ? path + '\0' + title + '\0' + reason : path;
    }
};

/// What is shown as one line at first: a row, and the items of a folder below it.
struct PlanGroup {
    PlanLine head;
    std::vector<PlanLine> items;  ///< At least one; the head itself if it is no folder.
    std::vector<bool> ticks;      ///< Of the items.
    std::size_t tickCount = 0;

    /// The groups of a plan by fate, then the largest first, none ticked. `rehearsal` is the plan's
    /// dry run; the suggestions name the items.
    [[nodiscard]] static std::vector<PlanGroup> of(
        const CleanPlan& plan,
        const std::vector<Suggestion>& suggestions,
        const CleanReport& rehearsal);
};

}  // namespace Brimlo
