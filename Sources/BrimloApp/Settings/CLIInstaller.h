#pragma once

#include "BrimloApp/Platform/Privilege.h"

#include <cstdint>
#include <optional>
#include <string>

/// The symlink by which a terminal finds the application's command line tool. Every call looks at
/// the disk.
namespace Brimlo::CLIInstaller {

inline constexpr const char* kLinkPath = "/usr/local/bin/brimlo";

struct Places {
    std::string resources;  ///< The folder with the tool, in a build that has one.
    std::string link;       ///< Absolute and standardized.
    Platform::AuthorizerPlaces authorizers;
    /// Folders separated by colons.
    std::string searchPath = std::string{};  // NOLINT(readability-redundant-member-init): optional
};

/// The places of this application on this system.
[[nodiscard]] Places usualPlaces();

/// The tool's path; nullopt if this build has no tool.
[[nodiscard]] std::optional<std::string> bundledCLI(const Places& places = usualPlaces());

/// Where a terminal finds this very tool: at the link, or in the first folder of the search path
/// with a "brimlo", where a package installs it. Nullopt if nowhere.
[[nodiscard]] std::optional<std::string> installedAt(const Places& places = usualPlaces());

/// The outcome of an installation.
enum class Outcome : std::uint8_t { installed, alreadyInstalled, noTool, cancelled, failed };

struct Result {
    Outcome outcome = Outcome::failed;
    std::string text;  ///< Why it failed.

    bool operator==(const Result&) const = default;
};

/// Makes the link with administrator rights, replacing another link or file. Blocks while the user
/// is asked.
[[nodiscard]] Result install(const Places& places = usualPlaces());

}  // namespace Brimlo::CLIInstaller
