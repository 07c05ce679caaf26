#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// The result of a clean, or of its dry run.
struct CleanReport {
    std::int64_t movedToTrashBytes = 0;   ///< Of the items that went to the Trash, as planned.
    std::int64_t freedNowBytes = 0;       ///< Of the items that are gone at once: Docker objects.
    std::vector<ItemProblem> failures;    ///< Items that could not be removed.
    std::vector<ItemProblem> refused;     ///< Items that the safety gate refused.
    std::vector<ItemProblem> unrecorded;  ///< Items that were removed without a journal entry.
    std::vector<std::string> notes;       ///< For callers to add to.
    std::vector<Uuid> journalIDs;         ///< Of the journal entries written, in order.
    std::int64_t processed = 0;           ///< Items removed, or that a dry run would remove.

    bool operator==(const CleanReport&) const = default;

    /// The paths of the items that are still where they were.
    [[nodiscard]] std::set<std::string> stayed() const {
        std::set<std::string> paths;
        for (const auto* problems : {&failures, &refused}) {
            for (const ItemProblem& problem : *problems) {
                paths.insert(problem.path);
            }
        }
        return paths;
    }

    /// Whether an item stayed, or was removed without a journal entry.
    [[nodiscard]] bool hasProblems() const {
        return !failures.empty() || !refused.empty() || !unrecorded.empty();
    }
};

}  // namespace Brimlo
