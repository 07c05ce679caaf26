#pragma once

#include "BrimloCore/Platform/SystemStores.h"

#include <cstdint>
#include <vector>

namespace Brimlo {

/// A store of the system and what it takes.
struct SystemPart {
    Platform::SystemStore store;  ///< With the paths that exist and could be read.
    std::int64_t size = 0;        ///< Allocated bytes, of what could be read.
    bool isComplete = true;       ///< Whether all of it could be read.

    bool operator==(const SystemPart&) const = default;
};

/// The space outside the user's files: measured and never touched.
namespace SystemSpace {

/// What the stores take, the largest first. A store that is empty, or of which nothing
/// can be read, is left out.
/// Blocks; changes nothing. Any thread.
[[nodiscard]] std::vector<SystemPart> measure(
    const std::vector<Platform::SystemStore>& stores = Platform::systemStores());

}  // namespace SystemSpace

}  // namespace Brimlo
