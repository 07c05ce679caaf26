#pragma once

#include <string>

namespace Brimlo::Platform {

/// Syncs the whole volume of a folder: many files for the price of a few. False when that failed or
/// the system has no such call; then sync the files one by one.
[[nodiscard]] bool syncVolume(const std::string& folder);

}  // namespace Brimlo::Platform
