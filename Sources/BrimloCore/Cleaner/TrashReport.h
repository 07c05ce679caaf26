#pragma once

#include "BrimloCore/Cleaner/ItemProblem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// The result of deleting from the Trash for good, or of its dry run.
struct TrashReport {
    std::int64_t bytes = 0;             ///< Bytes of the items deleted.
    std::int64_t removed = 0;           ///< Items that are gone.
    std::vector<ItemProblem> failures;  ///< Items still there, by their path in the Trash.

    bool operator==(const TrashReport&) const = default;

    /// The result of a purge: "Permanently removed 5 MB that Brimlo had moved to Trash.", followed
    /// by how many items are left and why.
    [[nodiscard]] std::string purgedSentence(bool dryRun) const;

    /// The result of emptying: "Emptied Trash: freed 5 MB.", or why something is left.
    [[nodiscard]] std::string emptiedSentence() const;
};

}  // namespace Brimlo
