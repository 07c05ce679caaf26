#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// What was deleted from the Trash for good, or would be in a dry run.
struct TrashReport {
    std::int64_t bytes = 0;             ///< Of what is gone.
    std::int64_t removed = 0;           ///< Items that are gone.
    std::vector<ItemProblem> failures;  ///< Items that are still there, by their path in the Trash.

    bool operator==(const TrashReport&) const = default;

    /// What came of a purge: "Permanently removed 5 MB that Brimlo had moved to Trash.", and after
    /// it how many items are left and why.
    [[nodiscard]] std::string purgedSentence(bool dryRun) const;

    /// What came of an emptying: "Emptied Trash: freed 5 MB.", or why something is left.
    [[nodiscard]] std::string emptiedSentence() const;
};

}  // namespace Brimlo
