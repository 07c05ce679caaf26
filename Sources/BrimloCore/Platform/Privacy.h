#pragma once

#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// Whether the system lets this program read the folders it protects from unapproved programs.
[[nodiscard]] bool canReadProtectedFolders();

/// The address of the settings page where the user grants that; empty where the system has no such
/// page.
[[nodiscard]] std::string privacySettingsAddress();

/// Why a walk had to skip an area, such as "~/Library/Mail" or "/private": a sentence.
[[nodiscard]] std::string reasonUnreadable(std::string_view area);

}  // namespace Brimlo::Platform
