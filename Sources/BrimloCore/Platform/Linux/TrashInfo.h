#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// The note beside an item in the Trash (freedesktop.org Trash Specification 1.0, "Contents of a
/// trash directory").
struct TrashInfo {
    /// Where the item came from: absolute in the home Trash, else relative to the folder that
    /// holds the Trash. Any bytes.
    std::string path;

    /// The journal entry of the removal, in a line of our own that other programs pass over.
    std::optional<std::string> entryID;

    /// The whole content of the note for a removal at `date`, which it tells in local time.
    [[nodiscard]] std::string text(std::time_t date) const;

    /// The note in a text; nullopt when it names no path.
    [[nodiscard]] static std::optional<TrashInfo> parse(std::string_view text);
};

/// The name that an item called `name` gets in the Trash at a given try, beginning with 1: the
/// name itself, then with a number before its ending. Shortened between characters where the
/// name of the note would be longer than a file system allows.
[[nodiscard]] std::string nameInTrash(std::string_view name, int attempt);

/// What the name of a note has behind the name of its item.
inline constexpr std::string_view kTrashInfoSuffix = ".trashinfo";

}  // namespace Brimlo::Platform
