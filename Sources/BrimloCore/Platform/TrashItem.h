#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <expected>
#include <optional>
#include <string>

/// What lies in the Trash, and the ways out of it. Paths are those that the Trash gave.
namespace Brimlo::Platform::TrashItem {

/// The journal entry named beside the item when it was moved; nullopt where the Trash keeps none.
[[nodiscard]] std::optional<std::string> entryID(const std::string& trashPath);

/// Moves the item to `path`, whose parent exists and at which nothing does: never overwrites.
[[nodiscard]] std::expected<void, Error> putBack(
    const std::string& trashPath, const std::string& path);

/// Deletes the item for good if it is the object with this identity.
///
/// Follows no link and leaves mounted volumes alone. Folders of the user's own that forbid their
/// change are deleted too. On failure what is left of the item lies where it was.
[[nodiscard]] std::expected<void, Error> remove(
    const std::string& trashPath, const FileIdentity& identity);

/// Removes what processes of this program that were killed have left in the home Trash: what is
/// left of items that they were deleting, and notes, a day old or older, of items that never came.
void removeLeftovers();

}  // namespace Brimlo::Platform::TrashItem
