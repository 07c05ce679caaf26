#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// Where the system's packages install the command line tool of this name, absolute; empty where
/// the system ships no such tools.
[[nodiscard]] std::vector<std::string> toolPaths(std::string_view name);

}  // namespace Brimlo::Platform
