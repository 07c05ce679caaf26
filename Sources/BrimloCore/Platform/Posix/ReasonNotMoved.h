#pragma once

#include <string>

namespace Brimlo::Platform {

/// Why moving an item failed, as a lower-case phrase; `code` is the `errno`.
[[nodiscard]] std::string reasonNotMoved(int code);

}  // namespace Brimlo::Platform
