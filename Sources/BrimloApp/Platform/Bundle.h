#pragma once

#include <string>

namespace Brimlo::Platform {

/// Where the packaged application keeps what comes with it, standardized; nothing need be there.
[[nodiscard]] std::string resourceFolder();

}  // namespace Brimlo::Platform
