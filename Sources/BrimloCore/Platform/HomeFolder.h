#pragma once

#include <string>

namespace Brimlo::Platform {

/// The user's home folder as the system reports it; empty when unknown.
///
/// Read at each call, since tests and launchers change it.
[[nodiscard]] std::string homeFolder();

}  // namespace Brimlo::Platform
