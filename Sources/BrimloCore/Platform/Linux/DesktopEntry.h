#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Brimlo::Platform {

/// How an installed application is called and started, from its desktop entry (freedesktop.org
/// Desktop Entry Specification 1.5).
struct DesktopEntry {
    std::string name;     ///< "Name", untranslated.
    std::string program;  ///< The absolute path of what "Exec" starts, links resolved. Empty when
                          ///< that is a program which starts many applications.
    std::string package;  ///< "flatpak ID" or "snap NAME"; empty for what is installed otherwise.

    /// Whether a process of the executable at `path` belongs to this application: it is the
    /// program itself, or lies beside it in a folder of the application's own, where a starting
    /// script has its binary.
    [[nodiscard]] bool starts(std::string_view path) const;

    /// Whether the program at this path starts many applications, so that a process of its own
    /// tells nothing: an interpreter, "flatpak" or the like.
    [[nodiscard]] static bool isLauncher(std::string_view path);

    /// The entry in the text of a ".desktop" file; nullopt when it starts nothing that is there,
    /// and is no package's.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view text);

    /// Those in the "applications" folders of `$XDG_DATA_HOME` and `$XDG_DATA_DIRS`, and in those
    /// to which Flatpak and Snap export theirs.
    [[nodiscard]] static std::vector<DesktopEntry> installed();
};

}  // namespace Brimlo::Platform
