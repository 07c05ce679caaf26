#include "BrimloCore/Platform/Pipe.h"

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::optional<Pipe> openPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    return Pipe{.readEnd = Descriptor{ends[0]}, .writeEnd = Descriptor{ends[1]}};
}

}  // namespace Brimlo::Platform
