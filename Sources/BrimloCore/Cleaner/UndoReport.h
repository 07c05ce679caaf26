#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"

#include <string>
#include <vector>

namespace Brimlo {

/// The result of restoring items.
struct UndoReport {
    std::vector<std::string> restored;  ///< The paths of the restored items, newest first.
    std::vector<ItemProblem> failures;  ///< Items that were not restored.
    std::vector<ItemProblem>
        unrecorded;  ///< Items that came back and the journal could not be told.

    bool operator==(const UndoReport&) const = default;

    [[nodiscard]] bool hasProblems() const { return !failures.empty() || !unrecorded.empty(); }

    /// "Restored 2 item(s).", followed by the first problem, if any.
    [[nodiscard]] std::string sentence() const;
};

}  // namespace Brimlo
