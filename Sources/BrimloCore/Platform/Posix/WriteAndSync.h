#pragma once

#include <string_view>

namespace Brimlo::Platform {

/// Writes all bytes to an open file. False, with `errno` set, when that failed; likewise below.
[[nodiscard]] bool writeBytes(int descriptor, std::string_view bytes);

/// Waits until the disk has all that was written to a file, through whichever descriptor.
[[nodiscard]] bool syncFile(int descriptor);

/// Both.
[[nodiscard]] bool writeAndSync(int descriptor, std::string_view bytes);

}  // namespace Brimlo::Platform
