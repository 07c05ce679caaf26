#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"

#include <string>
#include <vector>

namespace Brimlo {

/// What came of putting items back.
struct UndoReport {
    std::vector<std::string> restored;  ///< The paths at which the items are again, newest first.
    std::vector<ItemProblem> failures;  ///< Items that did not come back.
    std::vector<ItemProblem>
        unrecorded;  ///< Items that came back and the journal could not be told.

    bool operator==(const UndoReport&) const = default;

    [[nodiscard]] bool hasProblems() const { return !failures.empty() || !unrecorded.empty(); }

    /// "Restored 2 item(s).", and after it the first problem, if there is one.
    [[nodiscard]] std::string sentence() const;
};

}  // namespace Brimlo
