#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// The capacity of a volume in bytes.
struct VolumeCapacity {
    std::int64_t total = 0;
    std::int64_t available = 0;
    /// What the system could make available by giving up what it can get again; absent where it
    /// has no notion of that.
    std::optional<std::int64_t> availableForImportantUsage;
};

/// The capacity of the volume that `path` lies on; nullopt when the system doesn't tell.
[[nodiscard]] std::optional<VolumeCapacity> volumeCapacity(const std::string& path);

}  // namespace Brimlo::Platform
