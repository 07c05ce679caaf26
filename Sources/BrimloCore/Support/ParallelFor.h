#pragma once

#include <cstddef>
#include <functional>

namespace Brimlo {

/// Calls `body` once for each index below `count`, on as many threads as there are cores, the
/// caller's among them. Blocks until all calls are done. `body` must be safe to run concurrently
/// with itself; it may call `parallelFor`.
void parallelFor(std::size_t count, const std::function<void(std::size_t)>& body);

}  // namespace Brimlo
