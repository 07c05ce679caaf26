#pragma once

#include <string>
#include <vector>

namespace Brimlo::Platform {

/// The names of the applications that the user is running now, as the desktop shows them.
[[nodiscard]] std::vector<std::string> runningAppNames();

}  // namespace Brimlo::Platform
