#pragma once

#include <string_view>

namespace Brimlo::Platform {

/// Writes all bytes to an open file and waits until the disk has them. False, with `errno` set,
/// when that failed.
[[nodiscard]] bool writeAndSync(int descriptor, std::string_view bytes);

}  // namespace Brimlo::Platform
