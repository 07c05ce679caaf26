#include "BrimloCore/Platform/Pipe.h"

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::optional<Pipe> openPipe() {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return std::nullopt;
    }
    Pipe made{.readEnd = Descriptor{ends[0]}, .writeEnd = Descriptor{ends[1]}};
    // There is no call that does both. What our own programs inherit until here is closed by
    // `inheritStreamsOnly`.
    if (fcntl(ends[0], F_SETFD, FD_CLOEXEC) != 0 || fcntl(ends[1], F_SETFD, FD_CLOEXEC) != 0) {
        return std::nullopt;
    }
    return made;
}

}  // namespace Brimlo::Platform
