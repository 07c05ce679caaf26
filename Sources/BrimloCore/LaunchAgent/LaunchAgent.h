#pragma once

#include "BrimloCore/Models/Error.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

/// The job of the user's that cleans with the application closed: it starts the command line tool
/// with "autoclean --execute", first an interval after it was installed or the user has logged in,
/// then at each interval. The tool's words go to "~/Library/Logs/brimlo-autoclean.log".
namespace Brimlo::LaunchAgent {

inline constexpr std::string_view kLabel = "app.brimlo.autoclean";
inline constexpr std::int64_t kIntervalSeconds = 21'600;

/// The file that defines the job, whether it exists or not.
[[nodiscard]] std::string definitionPath();

/// Whether that file exists; the job may still not be loaded.
[[nodiscard]] bool isInstalled();

/// The path of the tool that the job starts; nullopt when there is no job, or when its file was
/// changed so that it can't be told.
[[nodiscard]] std::optional<std::string> installedExecutable();

/// Installs the job for the tool at an absolute path, in the place of an earlier one.
///
/// Fails with code 20 of the domain "Brimlo" when no tool is there, which leaves an earlier job as
/// it is, with code 21 when its path can't be written down, and with the system's error when the
/// files can't be made. That the system took the job in is not checked. Blocks.
[[nodiscard]] std::expected<void, Error> install(const std::string& executable);

/// Takes the job away, if there is one. Errors are ignored. Blocks.
void uninstall();

}  // namespace Brimlo::LaunchAgent
