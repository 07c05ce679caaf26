#pragma once

#include "BrimloCore/Support/Uuid.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// What came of a clean, or would come of it in a dry run.
struct CleanReport {
    std::int64_t movedToTrashBytes = 0;  ///< Of the items that went to the Trash, as planned.
    std::int64_t freedNowBytes = 0;      ///< Of the items that are gone at once: Docker objects.
    std::vector<std::string> failures;   ///< "path: reason" of items that were tried and stayed.
    std::vector<std::string> refused;    ///< "path: reason" of items that the safety gate stopped.
    std::vector<std::string> notes;      ///< For callers to add to.
    std::vector<Uuid> journalIDs;        ///< Of the journal entries written, in order.
    std::int64_t processed = 0;          ///< Items that went, or would have gone.

    bool operator==(const CleanReport&) const = default;
};

}  // namespace Brimlo
