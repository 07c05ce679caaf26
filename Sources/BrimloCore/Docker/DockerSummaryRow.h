#pragma once

#include <cstdint>
#include <string>

namespace Brimlo {

/// Docker's own summary of one type of objects.
struct DockerSummaryRow {
    std::string type;  ///< Docker's word: "Images", "Local Volumes".
    std::int64_t total = 0;
    std::int64_t active = 0;  ///< How many of them are in use.
    std::int64_t sizeBytes = 0;
    std::int64_t reclaimableBytes = 0;

    bool operator==(const DockerSummaryRow&) const = default;
};

}  // namespace Brimlo
