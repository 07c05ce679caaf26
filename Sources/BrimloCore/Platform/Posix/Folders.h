#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

/// Opening, changing and deleting folders relative to open ones.
namespace Brimlo::Platform {

/// Opens a folder for calls relative to it, following no symlink in any component.
///
/// `path` is absolute and in canonical form, on macOS with or without "/private". It is opened
/// component by component, so its length is not limited. Fails with ELOOP or ENOTDIR when a
/// component is not a folder any more.
[[nodiscard]] std::expected<Descriptor, Error> openFolder(std::string_view path);

/// Opens the folder at the relative path `below` the one open at `folder` for reading, following no
/// symlink in any component; -1 on failure.
[[nodiscard]] int openFolderBelow(int folder, const std::string& below);

/// The id of the mount of an open file; 0 when unknown.
[[nodiscard]] std::uint64_t mountID(int descriptor);

/// Lets the owner list, enter and change a folder; false on failure. A symlink is not followed.
bool makeWritable(int parent, const std::string& name);

/// Deletes `name` in the open folder `parent` with all its contents, if it has this identity; fails
/// with ESTALE when it is another object.
///
/// A folder is opened and then compared, so nothing in another one is touched. Other entries are
/// compared right before they are deleted: no call does both. Follows no symlink, enters no other
/// mount, keeps one descriptor open however deep the tree is, and makes the user's own read-only
/// folders writable. Stops at the first thing that can't be deleted.
[[nodiscard]] std::expected<void, Error> removeTree(
    int parent, const std::string& name, const FileIdentity& identity);

/// Why moving an item failed, as a lower-case phrase; `code` is the `errno`.
[[nodiscard]] std::string reasonNotMoved(int code);

}  // namespace Brimlo::Platform
