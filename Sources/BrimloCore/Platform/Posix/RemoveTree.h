#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/FileIdentity.h"

#include <expected>
#include <string>

namespace Brimlo::Platform {

/// Deletes what is called `name` in the open folder `parent`, with all that it holds, if it is the
/// object with this identity; fails with ESTALE when it is another.
///
/// A folder is opened and then compared, so that nothing in another one is touched. What is no
/// folder is compared right before it is deleted: there is no call that does both.
/// Follows no link, enters no other mount, keeps one descriptor open however deep the tree is,
/// and gives the user's own folders the permission that deleting in them takes. Stops at the first
/// thing that can't be deleted.
[[nodiscard]] std::expected<void, Error> removeTree(
    int parent, const std::string& name, const FileIdentity& identity);

}  // namespace Brimlo::Platform
