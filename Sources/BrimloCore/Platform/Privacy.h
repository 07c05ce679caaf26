#pragma once

#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// Whether the system lets this program read what it keeps from programs without the user's leave.
[[nodiscard]] bool canReadProtectedFolders();

/// The address of the page of the system's settings where the user allows that; empty where the
/// system has no such page.
[[nodiscard]] std::string privacySettingsAddress();

/// Why a walk had to pass over an area, such as "~/Library/Mail" or "/private": a sentence.
[[nodiscard]] std::string reasonUnreadable(std::string_view area);

}  // namespace Brimlo::Platform
