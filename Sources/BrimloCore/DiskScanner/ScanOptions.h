#pragma once

#include <cstdint>

namespace Brimlo {

/// How a scan weighs detail against memory.
struct ScanOptions {
    std::int64_t keepThreshold = 1'048'576;  ///< Children below so many bytes may be merged.
    std::int64_t alwaysKeepBelowCount = 40;  ///< So many children are all kept.
    bool crossDevices = false;               ///< Whether directories on other devices are entered.
    std::int64_t parallelDepth = 3;          ///< Directories above this depth fan out over threads.

    bool operator==(const ScanOptions&) const = default;
};

}  // namespace Brimlo
