#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>
#include <string>

namespace Brimlo::Platform {

/// Deletes what is called `name` in the open folder `parent`, with all that it holds.
///
/// Follows no link, enters no other mount, keeps one descriptor open however deep the tree is,
/// and gives the user's own folders the permission that deleting in them takes. Stops at the first
/// thing that can't be deleted.
[[nodiscard]] std::expected<void, Error> removeTree(int parent, const std::string& name);

}  // namespace Brimlo::Platform
