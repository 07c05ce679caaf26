#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

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
