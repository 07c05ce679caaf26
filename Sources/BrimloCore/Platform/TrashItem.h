#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <expected>
#include <optional>
#include <string>

/// What lies in the Trash, and the ways out of it. Paths are those that the Trash gave.
namespace Brimlo::Platform::TrashItem {

/// What lies at `trashPath`, if it is the item that was put into a Trash of this user's for the
/// journal entry `entryID`, when its identity was `recorded` (`FileIdentity::text`).
///
/// Where the Trash keeps a note beside each item, the note has to name the entry: inodes are used
/// again, and volumes get other device numbers. Elsewhere `recorded` has to be the identity;
/// absent, the entry is from before identities were recorded and is taken at its word. Fails with
/// ENOENT when the item is gone or something else has its name; any other error tells why that
/// can't be known.
[[nodiscard]] std::expected<FileIdentity, Error> find(
    const std::string& trashPath,
    const std::string& entryID,
    const std::optional<std::string>& recorded);

/// Moves the item with this identity to `path`, whose parent exists and at which nothing does:
/// never overwrites.
[[nodiscard]] std::expected<void, Error> putBack(
    const std::string& trashPath, const FileIdentity& identity, const std::string& path);

/// Deletes the item for good if it is the object with this identity.
///
/// Follows no symlink and leaves mounted volumes alone. Folders of the user's own that forbid their
/// change are deleted too. Needs no room on the disk. On failure what is left of the item lies
/// where it was.
[[nodiscard]] std::expected<void, Error> remove(
    const std::string& trashPath, const FileIdentity& identity);

/// Removes what processes of this program that were killed have left in the home Trash: what is
/// left of items that they were deleting, and notes, a day old or older, of items that never came.
void removeLeftovers();

}  // namespace Brimlo::Platform::TrashItem
