#include "BrimloCore/Platform/Processes.h"

#include "BrimloCore/Platform/Linux/ApplicationNames.h"

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

std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& /*actions*/) {
    // All files are opened with O_CLOEXEC.
    return short{0};
}

char** environment() {
    return environ;
}

std::vector<std::string> runningAppNames() {
    return applicationNames("/proc", DesktopEntry::installed());
}

}  // namespace Brimlo::Platform
