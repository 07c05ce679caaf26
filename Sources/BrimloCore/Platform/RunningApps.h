#pragma once

#include <string>
#include <vector>

namespace Brimlo::Platform {

/// The names of the user's running applications, as the desktop shows them.
[[nodiscard]] std::vector<std::string> runningAppNames();

}  // namespace Brimlo::Platform
