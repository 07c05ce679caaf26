#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo {

/// The walks that measure what lies on a disk.
class DiskScanner {
public:
    /// The bytes that a path takes; 0 when nothing is there or can be read. An estimate: the
    /// folders' own blocks are left out, and a mount inside is measured too. A hard-linked file
    /// counts once, a link as itself. Blocks; keeps no state, so that many run at once.
    [[nodiscard]] static std::int64_t quickSize(const std::string& path);

    /// The fast walk of a directory; nullopt when it can't be read that way at all.
    [[nodiscard]] static std::optional<std::int64_t> bulkSize(const std::string& path);

    /// The plain walk: counts the folders' own blocks and stays on the device.
    [[nodiscard]] static std::int64_t legacyQuickSize(const std::string& path);
};

}  // namespace Brimlo
