#pragma once

#include "BrimloApp/Platform/Privilege.h"

#include <cstdint>
#include <optional>
#include <string>

/// The link by which a terminal finds the command line tool that comes with the application.
/// Looked for anew at each call.
namespace Brimlo::CLIInstaller {

inline constexpr const char* kLinkPath = "/usr/local/bin/brimlo";

struct Places {
    std::string resources;  ///< The folder that holds the tool, in a build that has one.
    std::string link;       ///< Absolute and standardized.
    Platform::AuthorizerPlaces authorizers;
    /// Folders separated by colons.
    std::string searchPath = std::string{};  // NOLINT(readability-redundant-member-init): optional
};

/// Those of this application on this system.
[[nodiscard]] Places usualPlaces();

/// The tool's path; nullopt when this build has none.
[[nodiscard]] std::optional<std::string> bundledCLI(const Places& places = usualPlaces());

/// Where a terminal finds this very tool: at the link, or in the folder of the search path whose
/// "brimlo" comes first, as a package installs it. Nullopt when that is nowhere.
[[nodiscard]] std::optional<std::string> installedAt(const Places& places = usualPlaces());

/// What came of an installation.
enum class Outcome : std::uint8_t { installed, alreadyInstalled, noTool, cancelled, failed };

struct Result {
    Outcome outcome = Outcome::failed;
    std::string text;  ///< Why it failed.

    bool operator==(const Result&) const = default;
};

/// Makes the link, in the place of another link or a file, with an administrator's rights. Blocks
/// while the user is asked for them.
[[nodiscard]] Result install(const Places& places = usualPlaces());

}  // namespace Brimlo::CLIInstaller
