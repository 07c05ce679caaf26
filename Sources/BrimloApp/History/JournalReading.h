#pragma once

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Journal/JournalEntry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Brimlo {

/// The journal and the Trash as they stood at one moment.
struct JournalReading {
    std::uint64_t number = 0;           ///< Grows from reading to reading in this process.
    std::vector<JournalEntry> entries;  ///< Newest first.
    std::vector<HistoryBatch> batches;  ///< The same by cleanup, newest first.

    std::string problem;  ///< Why the journal can't be read; empty when it can.

    /// Reads the journal now, and looks for each item in the Trash. Blocks; any thread.
    [[nodiscard]] static JournalReading of(Cleaner& cleaner);
};

}  // namespace Brimlo
