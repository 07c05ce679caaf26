#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <optional>

namespace Brimlo::Platform {

/// The two ends of a pipe.
struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

/// A new pipe, or nullopt when the system has none left. No program that another thread starts at
/// the same moment inherits an end of it.
[[nodiscard]] std::optional<Pipe> openPipe();

}  // namespace Brimlo::Platform
