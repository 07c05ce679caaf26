#pragma once

#include <string>

namespace Brimlo::Platform {

/// Whether the system lets this program read what it keeps from programs without the user's leave.
[[nodiscard]] bool canReadProtectedFolders();

/// The address of the page of the system's settings where the user allows that; empty where the
/// system has no such page.
[[nodiscard]] std::string privacySettingsAddress();

}  // namespace Brimlo::Platform
