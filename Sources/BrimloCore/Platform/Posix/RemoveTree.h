#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <expected>
#include <string>

namespace Brimlo::Platform {

/// Deletes `name` in the open folder `parent` with all its contents, if it has this identity; fails
/// with ESTALE when it is another object.
///
/// A folder is opened and then compared, so nothing in another one is touched. Other entries are
/// compared right before they are deleted: no call does both. Follows no symlink, enters no other
/// mount, keeps one descriptor open however deep the tree is, and makes the user's own read-only
/// folders writable. Stops at the first thing that can't be deleted.
[[nodiscard]] std::expected<void, Error> removeTree(
    int parent, const std::string& name, const FileIdentity& identity);

}  // namespace Brimlo::Platform
