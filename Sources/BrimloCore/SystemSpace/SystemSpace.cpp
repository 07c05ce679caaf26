#include "BrimloCore/SystemSpace/SystemSpace.h"

#include "BrimloCore/DiskScanner/DiskScanner.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace Brimlo::SystemSpace {

namespace {

std::optional<SystemPart> measured(const Platform::SystemStore& store) {
    SystemPart part{.store = store};
    std::erase_if(part.store.paths, [&](const std::string& path) {
        const auto control = std::make_shared<ScanControl>();
        const auto tree = DiskScanner{control, {}}.scan(path);
        // An empty folder takes a block, too.
        const bool isEmpty = tree && tree->fileCount == 0;
        const std::int64_t bytes = isEmpty ? 0 : tree ? tree->size : DiskScanner::quickSize(path);
        part.size += bytes;
        part.isComplete = part.isComplete && control->inaccessible().empty();
        return bytes == 0;
    });
    return part.size > 0 ? std::optional{std::move(part)} : std::nullopt;
}

}  // namespace

std::vector<SystemPart> measure(const std::vector<Platform::SystemStore>& stores) {
    std::vector<SystemPart> parts;
    for (const Platform::SystemStore& store : stores) {
        if (auto part = measured(store)) {
            parts.push_back(*std::move(part));
        }
    }
    std::ranges::stable_sort(parts, std::greater{}, &SystemPart::size);
    return parts;
}

}  // namespace Brimlo::SystemSpace
