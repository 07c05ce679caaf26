#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <ctime>
#include <expected>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Items in the Trash, and the ways out of it. Paths are those that the Trash gave.
namespace Brimlo::Platform::TrashItem {

/// An item that some program put into a Trash of this user.
struct Listed {
    std::string trashPath;
    FileIdentity identity;
    /// Where it was, absolute, if the Trash names a place that the item may go back to.
    std::optional<std::string> path;
    std::optional<std::time_t> date;  ///< When it was moved, if the Trash tells.
};

/// The items of the home Trash and of those of local volumes, and the Trashes that can't be read.
struct Listing {
    std::vector<Listed> items;
    std::vector<std::pair<std::string, Error>> closed;
};
[[nodiscard]] Listing list();

/// The item at `trashPath`, if it is the one that was put into a Trash of this user for the journal
/// entry `entryID`, when its identity was `recorded` (`FileIdentity::text`).
///
/// Where the Trash has trashinfo files, the item's must name the entry: inodes are reused, and
/// volumes get other device numbers. Elsewhere `recorded` must be the identity; absent, the entry
/// predates recorded identities and is trusted. Fails with ENOENT when the item is gone or
/// something else has its name; any other error says why that can't be known.
[[nodiscard]] std::expected<FileIdentity, Error> find(
    const std::string& trashPath,
    const std::string& entryID,
    const std::optional<std::string>& recorded);

/// Moves the item with this identity to `path`, whose parent exists; never overwrites. `settle`
/// must follow.
[[nodiscard]] std::expected<void, Error> putBack(
    const std::string& trashPath, const FileIdentity& identity, const std::string& path);

/// An item that `putBack` has moved.
struct Returned {
    std::string trashPath;
    std::string path;
};

/// Syncs the folders of items that have moved, each once, and then removes their trashinfo files.
void settle(const std::vector<Returned>& returned);

/// Deletes the item for good if it has this identity. Follows no symlink and enters no mounted
/// volume. The user's own read-only folders are deleted too. Needs no free disk space. On failure
/// the rest of the item stays where it was.
[[nodiscard]] std::expected<void, Error> remove(
    const std::string& trashPath, const FileIdentity& identity);

/// Cleans up after killed processes of this program in the home Trash: half-deleted items, and
/// trashinfo files without an item that are at least a day old.
void removeLeftovers();

}  // namespace Brimlo::Platform::TrashItem
