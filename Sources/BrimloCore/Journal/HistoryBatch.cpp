#include "BrimloCore/Journal/HistoryBatch.h"

#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <map>

namespace Brimlo {

std::chrono::sys_seconds HistoryBatch::date() const {
    const auto latest = std::ranges::max_element(items, {}, &JournalEntry::date);
    return latest == items.end() ? std::chrono::sys_seconds::min() : latest->date;
}

std::size_t HistoryBatch::restorableCount() const {
    return static_cast<std::size_t>(std::ranges::count_if(items, &JournalEntry::isRestorable));
}

std::string HistoryBatch::title() const {
    return items.size() == 1 ? std::string{Path::name(items.front().originalPath)}
                             : std::to_string(items.size()) + " items";
}

std::vector<HistoryBatch> HistoryBatch::group(const std::vector<JournalEntry>& entries) {
    std::vector<HistoryBatch> batches;
    std::map<Uuid, std::size_t> places;
    for (const JournalEntry& entry : entries) {
        const auto [place, isNew] = places.try_emplace(entry.batchID, batches.size());
        if (isNew) {
            batches.push_back({.id = entry.batchID, .items = {}});
        }
        batches[place->second].items.push_back(entry);
    }
    return batches;
}

}  // namespace Brimlo
