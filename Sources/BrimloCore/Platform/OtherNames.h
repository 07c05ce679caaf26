#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The other paths at which the system shows what lies at a path, because a folder of its volume is
/// attached in several places: as it was when this was made.
class OtherNames {
public:
    OtherNames();

    /// Those of `path`, which is standardized and free of links but for its last component.
    [[nodiscard]] std::vector<std::string> of(std::string_view path) const;

private:
    struct Mounts;
    std::shared_ptr<const Mounts> mounts_;
};

}  // namespace Brimlo::Platform
