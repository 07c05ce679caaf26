#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"
#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

/// What came of a clean, or would come of it in a dry run.
struct CleanReport {
    std::int64_t movedToTrashBytes = 0;   ///< Of the items that went to the Trash, as planned.
    std::int64_t freedNowBytes = 0;       ///< Of the items that are gone at once: Docker objects.
    std::vector<ItemProblem> failures;    ///< Items that were tried and stayed.
    std::vector<ItemProblem> refused;     ///< Items that the safety gate stopped.
    std::vector<ItemProblem> unrecorded;  ///< Items that went without a journal entry.
    std::vector<std::string> notes;       ///< For callers to add to.
    std::vector<Uuid> journalIDs;         ///< Of the journal entries written, in order.
    std::int64_t processed = 0;           ///< Items that went, or would have gone.

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

    /// Whether an item stayed, or went without a journal entry.
    [[nodiscard]] bool hasProblems() const {
        return !failures.empty() || !refused.empty() || !unrecorded.empty();
    }
};

}  // namespace Brimlo
