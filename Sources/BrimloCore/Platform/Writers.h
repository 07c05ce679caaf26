#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>

namespace Brimlo::Platform {

/// Keeps others from writing to the open file `file` until it is closed or somebody has waited too
/// long (on Linux 45 seconds). `file` is open for reading only.
///
/// Fails when a program has the file open for writing, and when the system refuses. Does nothing on
/// a system without such leases.
[[nodiscard]] std::expected<void, Error> holdWriters(int file);

/// Whether writers are still kept out and none waits. True on a system without such leases.
[[nodiscard]] bool isUndisturbed(int file);

}  // namespace Brimlo::Platform
