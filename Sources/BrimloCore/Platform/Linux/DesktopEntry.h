#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// An installed application, from its desktop entry (freedesktop.org Desktop Entry Specification
/// 1.5).
struct DesktopEntry {
    std::string name;     ///< "Name", untranslated.
    std::string program;  ///< The absolute path of what "Exec" starts, links resolved. Empty when
                          ///< that is a program which starts many applications.
    std::string package;  ///< "flatpak ID" or "snap NAME"; empty for what is installed otherwise.

    /// Whether a process of the executable at `path` belongs to this application: it is the program
    /// itself, or lies beside it in a folder of the application's own, as with a start script.
    [[nodiscard]] bool starts(std::string_view path) const;

    /// Whether the program at this path starts many applications, so that its processes tell
    /// nothing: an interpreter, "flatpak" or the like.
    [[nodiscard]] static bool isLauncher(std::string_view path);

    /// The entry in the text of a ".desktop" file; nullopt when its program does not exist and it
    /// is not a package's.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view text);

    /// The entries in the "applications" folders of `$XDG_DATA_HOME` and `$XDG_DATA_DIRS`, and in
    /// those of Flatpak and Snap.
    [[nodiscard]] static std::vector<DesktopEntry> installed();
};

}  // namespace Brimlo::Platform
