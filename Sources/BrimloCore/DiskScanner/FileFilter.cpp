#include "BrimloCore/DiskScanner/FileFilter.h"

#include "BrimloCore/DiskScanner/FileNode.h"

#include <algorithm>
#include <ranges>
#include <vector>

namespace Brimlo {

bool FileFilter::takes(
    std::string_view name, std::int64_t allocatedBytes, std::chrono::sys_seconds modified) const {
    return allocatedBytes >= minSize && (!before || modified < *before) &&
           (kinds.empty() || kinds.contains(kindOfFile(name)));
}

bool FileFilter::takesAnyOf(const FileNode& node) const {
    std::vector<const FileNode*> waiting{&node};
    while (!waiting.empty()) {
        const FileNode& next = *waiting.back();
        waiting.pop_back();
        if (next.isAggregate) {
            if (kinds.empty() && minSize == 0 && (!before || next.modified < *before)) {
                return true;
            }
        } else if (!next.isDirectory) {
            if (takes(next.name(), next.size, next.modified)) {
                return true;
            }
        } else if (next.size >= minSize) {
            // The children come with the largest first.
            for (const FileNode* child : next.children() | std::views::reverse) {
                waiting.push_back(child);
            }
        }
    }
    return false;
}

std::chrono::sys_seconds FileFilter::daysAgo(std::int64_t days) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    const std::int64_t most = std::chrono::floor<std::chrono::days>(now).time_since_epoch().count();
    return now - std::chrono::days{std::min(days, most)};
}

}  // namespace Brimlo
