#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

/// The background job that cleans while the application is closed: it runs the command line tool
/// with "autoclean --execute", first an interval after the installation or login, then at each
/// interval. The tool's output goes to "~/Library/Logs/brimlo-autoclean.log".
namespace Brimlo::LaunchAgent {

inline constexpr std::string_view kLabel = "app.brimlo.autoclean";
inline constexpr std::int64_t kIntervalSeconds = 21'600;

/// The file that defines the job, whether it exists or not.
[[nodiscard]] std::string definitionPath();

/// Whether that file exists; the job may still not be loaded.
[[nodiscard]] bool isInstalled();

/// The path of the tool that the job starts; nullopt when there is no job, or when its file has no
/// readable one.
[[nodiscard]] std::optional<std::string> installedExecutable();

/// Installs the job for the tool at an absolute path; replaces an earlier one.
///
/// Fails with code 20 of the domain "Brimlo" when there is no tool, which leaves an earlier job as
/// it is, with code 21 when the path can't be part of the file, and with the system's error when
/// the files can't be written. Does not check that the system has loaded the job. Blocks.
[[nodiscard]] std::expected<void, Error> install(const std::string& executable);

/// Shows a notification on the desktop. Does nothing where no desktop answers. Blocks.
void notify(const std::string& text);

/// Removes the job, if there is one. Errors are ignored. Blocks.
void uninstall();

}  // namespace Brimlo::LaunchAgent
