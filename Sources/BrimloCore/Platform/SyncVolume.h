#pragma once

#include <string>

namespace Brimlo::Platform {

/// Waits until the disk has all that was written to the volume of a folder: many files at the
/// price of a few. False when that failed or the system has no such call; then the files have to be
/// synced one by one.
[[nodiscard]] bool syncVolume(const std::string& folder);

}  // namespace Brimlo::Platform
