#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The mounts that this process sees (proc(5), /proc/PID/mountinfo).
class MountTable {
public:
    /// As it is now.
    [[nodiscard]] static MountTable read();

    [[nodiscard]] static MountTable parse(std::string_view text);

    /// Where the mount with this id (`stx_mnt_id` of statx(2)) is attached.
    [[nodiscard]] std::optional<std::string> mountPoint(std::uint64_t id) const;

    /// Whether something is mounted on `path` or below it.
    [[nodiscard]] bool hasMountAtOrBelow(std::string_view path) const;

    /// The paths at which other mounts show what lies at `path`, one that another mount covers by
    /// now included.
    [[nodiscard]] std::vector<std::string> otherNames(std::string_view path) const;

private:
    struct Mount {
        std::uint64_t id;
        std::string device;
        std::string root;   ///< What of the file system is mounted, "" for all of it.
        std::string point;  ///< "" for the root.
    };
    std::vector<Mount> mounts_;
};

}  // namespace Brimlo::Platform
