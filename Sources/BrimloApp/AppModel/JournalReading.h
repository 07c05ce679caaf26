#pragma once

#include "BrimloCore/Support/HistoryBatch.h"
#include "BrimloCore/Support/Journal.h"

#include <cstdint>
#include <vector>

namespace Brimlo {

/// The journal as it stood at one moment.
struct JournalReading {
    std::uint64_t number = 0;           ///< Grows from reading to reading in this process.
    std::vector<JournalEntry> entries;  ///< Newest first.
    std::vector<HistoryBatch> batches;  ///< The same by cleanup, newest first.

    /// Reads the journal now. Blocks; any thread.
    [[nodiscard]] static JournalReading of(Journal& journal);
};

}  // namespace Brimlo
