#include "BrimloCore/Support/VolumeInfo.h"

#include "BrimloCore/Platform/Volume.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <algorithm>

namespace Brimlo::VolumeInfo {

std::int64_t Snapshot::purgeable() const {
    return std::max<std::int64_t>(0, availableIncludingPurgeable.value_or(available) - available);
}

std::optional<Snapshot> snapshot(const std::string& path) {
    const std::optional<Platform::VolumeCapacity> capacity = Platform::volumeCapacity(path);
    if (!capacity) {
        return std::nullopt;
    }
    return Snapshot{
        .total = capacity->total,
        .available = capacity->available,
        .availableIncludingPurgeable = capacity->availableForImportantUsage,
    };
}

std::optional<Snapshot> ofHome() {
    std::optional<Snapshot> home = snapshot(StoragePaths::home());
    const std::optional<Snapshot> system = snapshot("/");
    // On APFS and btrfs the parts of one disk differ in device, but share one capacity.
    if (home && system) {
        home->isSystem = home->total == system->total;
    }
    return home;
}

}  // namespace Brimlo::VolumeInfo
