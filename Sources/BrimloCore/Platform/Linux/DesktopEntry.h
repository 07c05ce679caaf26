#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// An installed application, from its desktop entry (freedesktop.org Desktop Entry Specification
/// 1.5).
struct DesktopEntry {
    std::string name;  ///< "Name", untranslated.
    /// The absolute path of the program in "Exec", symlinks resolved; empty for a launcher.
    std::string program;
    std::string package;  ///< "flatpak ID" or "snap NAME"; empty for other installations.

    /// Whether a process of the executable at `path` belongs to this application: it is the program
    /// or, as with a start script, beside it in a folder of the application.
    [[nodiscard]] bool starts(std::string_view path) const;

    /// Whether the program at this path starts many applications: an interpreter, "flatpak" or the
    /// like.
    [[nodiscard]] static bool isLauncher(std::string_view path);

    /// The entry in the text of a ".desktop" file; nullopt when its program does not exist, unless
    /// it belongs to a package.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view text);

    /// The entries in the "applications" folders of `$XDG_DATA_HOME` and `$XDG_DATA_DIRS`, and in
    /// those of Flatpak and Snap.
    [[nodiscard]] static std::vector<DesktopEntry> installed();
};

}  // namespace Brimlo::Platform
