#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// The other paths at which the system shows what lies at `path`, because a folder of its volume is
/// attached in several places. `path` is standardized and free of links but for its last component.
[[nodiscard]] std::vector<std::string> otherNames(std::string_view path);

}  // namespace Brimlo::Platform
