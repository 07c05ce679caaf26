#include "BrimloApp/History/JournalReading.h"

#include <atomic>

namespace Brimlo {

JournalReading JournalReading::of(Cleaner& cleaner) {
    // Taken before the file is read: of two readings the one with the higher number then has seen
    // whatever had been written when the other began.
    static std::atomic<std::uint64_t> last = 0;
    JournalReading reading{.number = ++last};
    if (auto entries = cleaner.history()) {
        reading.entries = *std::move(entries);
        reading.batches = HistoryBatch::group(reading.entries);
    } else {
        reading.problem = entries.error().description;
    }
    return reading;
}

}  // namespace Brimlo
