#pragma once

#include <cstdint>
#include <string>

namespace Brimlo::Platform {

/// A size in decimal units, formatted as the system's own programs do.
[[nodiscard]] std::string byteCount(std::int64_t count);

}  // namespace Brimlo::Platform
