#pragma once

#include <string>

namespace Brimlo::Platform {

/// A standardized path without a leading "/private", where the system omits that: on macOS when the
/// rest leads to the same entry, as it does below /etc, /tmp and /var.
[[nodiscard]] std::string withoutPrivatePrefix(std::string path);

}  // namespace Brimlo::Platform
