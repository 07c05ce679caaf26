#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Syncs the whole volume of a folder: many files for the price of a few. False when that failed or
/// the system has no such call; then sync the files one by one.
[[nodiscard]] bool syncVolume(const std::string& folder);

/// The other paths of a file or folder, because a folder of its volume is mounted in several
/// places: a snapshot of the mounts.
class OtherNames {
public:
    OtherNames();

    /// The other paths of `path`, which is standardized and free of symlinks except for its last
    /// component.
    [[nodiscard]] std::vector<std::string> of(std::string_view path) const;

private:
    struct Mounts;
    std::shared_ptr<const Mounts> mounts_;
};

}  // namespace Brimlo::Platform
