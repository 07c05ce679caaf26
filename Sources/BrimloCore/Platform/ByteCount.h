#pragma once

#include <cstdint>
#include <string>

namespace Brimlo::Platform {

/// A count of bytes in decimal units, as the system's own programs write it.
[[nodiscard]] std::string byteCount(std::int64_t count);

}  // namespace Brimlo::Platform
