#include "BrimloApp/AppModel/JournalReading.h"

#include <atomic>

namespace Brimlo {

JournalReading JournalReading::of(Journal& journal) {
    // Taken before the file is read: of two readings the one with the higher number then has seen
    // whatever had been written when the other began.
    static std::atomic<std::uint64_t> last = 0;
    JournalReading reading{.number = ++last, .entries = journal.entries(), .batches = {}};
    reading.batches = HistoryBatch::group(reading.entries);
    return reading;
}

}  // namespace Brimlo
