#include "BrimloCore/Platform/Spawn.h"

#include <unistd.h>

namespace Brimlo::Platform {

std::optional<short> inheritStreamsOnly(posix_spawn_file_actions_t& /*actions*/) {
    // Every file of ours is opened so that no program inherits it.
    return short{0};
}

char** environment() {
    return environ;
}

}  // namespace Brimlo::Platform
