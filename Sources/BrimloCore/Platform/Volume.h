#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// The capacity of a volume in bytes.
struct VolumeCapacity {
    std::int64_t total = 0;
    std::int64_t available = 0;
    /// What the system could free of data that it can get again; absent where it has no such
    /// notion.
    std::optional<std::int64_t> availableForImportantUsage;
};

/// The capacity of the volume of `path`; nullopt when unknown.
[[nodiscard]] std::optional<VolumeCapacity> volumeCapacity(const std::string& path);

}  // namespace Brimlo::Platform
