#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// How full a volume is.
namespace Brimlo::VolumeInfo {

/// Bytes at one moment.
struct Snapshot {
    std::int64_t total = 0;
    std::int64_t available = 0;
    std::optional<std::int64_t>
        availableIncludingPurgeable;  ///< Absent where the system has no purgeable space.
    bool isSystem = true;             ///< False for a home folder on another disk than the system.

    [[nodiscard]] std::int64_t used() const { return total - available; }

    /// What the system could free by itself beyond what is free now; never below 0.
    [[nodiscard]] std::int64_t purgeable() const;

    bool operator==(const Snapshot&) const = default;
};

/// The figures of the volume that `path` lies on; nullopt when the system doesn't tell.
[[nodiscard]] std::optional<Snapshot> snapshot(const std::string& path);

/// The figures of the volume of the home folder, where nearly all that is cleaned lies.
[[nodiscard]] std::optional<Snapshot> ofHome();

}  // namespace Brimlo::VolumeInfo
