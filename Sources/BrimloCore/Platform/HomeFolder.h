#pragma once

#include <string>

namespace Brimlo::Platform {

/// The user's home folder as the system reports it now; empty when it reports none.
///
/// Read anew at each call, since tests and launchers change it.
[[nodiscard]] std::string homeFolder();

}  // namespace Brimlo::Platform
