#include "BrimloCore/Support/VolumeInfo.h"

#include "BrimloCore/Platform/Volume.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>

namespace Brimlo::VolumeInfo {

std::int64_t Snapshot::purgeable() const {
    return std::max<std::int64_t>(0, availableIncludingPurgeable - available);
}

std::optional<Snapshot> snapshot(const std::string& path) {
    const std::optional<Platform::VolumeCapacity> capacity = Platform::volumeCapacity(path);
    if (!capacity) {
        return std::nullopt;
    }
    return Snapshot{
        .total = capacity->total,
        .available = capacity->available,
        .availableIncludingPurgeable =
            capacity->availableForImportantUsage.value_or(capacity->available),
    };
}

std::optional<Snapshot> ofHome() {
    return snapshot(StoragePaths::home());
}

}  // namespace Brimlo::VolumeInfo
