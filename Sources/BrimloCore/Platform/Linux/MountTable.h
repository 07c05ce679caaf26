#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The mounts that this process sees (proc(5), /proc/PID/mountinfo).
class MountTable {
public:
    struct Mount {
        std::uint64_t id;
        std::string device;
        std::string root;   ///< The mounted part of the file system, "" for all of it.
        std::string point;  ///< "" for the root.
        std::string type;
    };

    /// The current table.
    [[nodiscard]] static MountTable read();

    [[nodiscard]] static MountTable parse(std::string_view text);

    /// The mount point of the mount with this id (`stx_mnt_id` of statx(2)).
    [[nodiscard]] std::optional<std::string> mountPoint(std::uint64_t id) const;

    /// The mount points of file systems that answer without a server or another program: a look at
    /// the others may never return.
    [[nodiscard]] std::set<std::string> localPoints() const;

    /// Whether there is a mount point at `path` or below it.
    [[nodiscard]] bool hasMountAtOrBelow(std::string_view path) const;

    /// The paths at which other mounts show the same place as `path`, including ones that are
    /// covered by another mount.
    [[nodiscard]] std::vector<std::string> otherNames(std::string_view path) const;

    /// The fewest mounts that show all that can be seen of the file system of the mount `id`, only
    /// those that `isVisible` lets through. None of them shows a part of what another shows.
    [[nodiscard]] std::vector<Mount> wholeOf(
        std::uint64_t id, const std::function<bool(const Mount&)>& isVisible) const;

private:
    std::vector<Mount> mounts_;
};

}  // namespace Brimlo::Platform
