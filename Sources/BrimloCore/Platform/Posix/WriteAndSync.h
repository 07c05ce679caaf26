#pragma once

#include <string_view>

namespace Brimlo::Platform {

/// Writes all bytes to an open file. False, with `errno` set, on failure; so do the functions
/// below.
[[nodiscard]] bool writeBytes(int descriptor, std::string_view bytes);

/// Syncs a file to disk, whichever descriptor wrote it.
[[nodiscard]] bool syncFile(int descriptor);

/// Both.
[[nodiscard]] bool writeAndSync(int descriptor, std::string_view bytes);

}  // namespace Brimlo::Platform
