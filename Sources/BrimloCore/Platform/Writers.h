#pragma once

#include "BrimloCore/Models/Error.h"

#include <expected>

namespace Brimlo::Platform {

/// Lets nobody else write to the open file `file` until it is closed or somebody has waited for too
/// long (on Linux 45 seconds). `file` is open for reading alone.
///
/// Fails where a program has the file open for writing, and where the system refuses. Does nothing
/// on a system that can't hold writers off.
[[nodiscard]] std::expected<void, Error> holdWriters(int file);

/// Whether the writers are still held and none waits. True where none can be held.
[[nodiscard]] bool isUndisturbed(int file);

}  // namespace Brimlo::Platform
