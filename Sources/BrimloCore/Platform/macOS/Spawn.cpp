#include "BrimloCore/Platform/Spawn.h"

#include <crt_externs.h>
#include <spawn.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& actions) {
    // The streams that are redirected stay open by that; standard input has to be named.
    if (posix_spawn_file_actions_addinherit_np(&actions, STDIN_FILENO) != 0) {
        return std::nullopt;
    }
    return static_cast<short>(POSIX_SPAWN_CLOEXEC_DEFAULT);
}

char** environment() {
    return *_NSGetEnviron();
}

}  // namespace Brimlo::Platform
