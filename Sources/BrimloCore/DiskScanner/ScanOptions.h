#pragma once

#include <cstdint>

namespace Brimlo {

/// The balance of detail and memory in a scan.
struct ScanOptions {
    std::int64_t keepThreshold = 1'048'576;  ///< Smaller children may be merged, in bytes.
    std::int64_t alwaysKeepBelowCount = 40;  ///< Up to this many children none is merged.
    bool crossDevices = false;               ///< Whether directories on other devices are entered.
    std::int64_t parallelDepth = 3;          ///< Directories above it are split among threads.

    bool operator==(const ScanOptions&) const = default;
};

}  // namespace Brimlo
