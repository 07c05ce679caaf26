#pragma once

#include "BrimloCore/Journal/JournalEntry.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace Brimlo {

/// One cleanup, as the history shows it.
struct HistoryBatch {
    Uuid id;                          ///< The batch id of its entries.
    std::vector<JournalEntry> items;  ///< Newest first.

    /// The latest date among the items; the distant past when there are none.
    [[nodiscard]] std::chrono::sys_seconds date() const;

    /// How many items can still be put back, as far as the journal knows.
    [[nodiscard]] std::size_t restorableCount() const;

    /// The name of the only item, or the number of items, as in "12 items".
    [[nodiscard]] std::string title() const;

    /// The batches of journal entries that are given newest first, by their newest entry.
    [[nodiscard]] static std::vector<HistoryBatch> group(const std::vector<JournalEntry>& entries);
};

}  // namespace Brimlo
