#pragma once

#include <string>

namespace Brimlo::Platform {

/// Why a system call that was to move an item failed, as a lower-case phrase; `code` is its
/// `errno`.
[[nodiscard]] std::string reasonNotMoved(int code);

}  // namespace Brimlo::Platform
