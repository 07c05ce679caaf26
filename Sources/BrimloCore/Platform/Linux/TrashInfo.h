#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// A trashinfo file (freedesktop.org Trash Specification 1.0, "Contents of a trash directory").
struct TrashInfo {
    /// The original path: absolute in the home Trash, else relative to the folder that holds the
    /// Trash. Any bytes.
    std::string path;

    /// The journal entry of the removal, in a key of our own that other programs ignore.
    std::optional<std::string> entryID;

    /// When the item was removed, as a parsed file tells.
    std::optional<std::time_t> date = std::nullopt;

    /// The file's content for a removal at `now`, which it gives in local time.
    [[nodiscard]] std::string text(std::time_t now) const;

    /// The parsed content; nullopt when it names no path.
    [[nodiscard]] static std::optional<TrashInfo> parse(std::string_view text);
};

/// The name of an item called `name` in the Trash at a given attempt, starting with 1: the name
/// itself, then with a number before its extension. Shortened between characters where the
/// trashinfo file's name would be too long for a file system.
[[nodiscard]] std::string nameInTrash(std::string_view name, int attempt);

/// The extension of trashinfo files.
inline constexpr std::string_view kTrashInfoSuffix = ".trashinfo";

}  // namespace Brimlo::Platform
