#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <optional>

namespace Brimlo::Platform {

/// The two ends of a pipe.
struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

/// A new pipe, or nullopt when the system has no descriptors left. Not inherited by programs that
/// other threads start at the same moment.
[[nodiscard]] std::optional<Pipe> openPipe();

}  // namespace Brimlo::Platform
