#include "BrimloCore/Platform/Processes.h"

#include <algorithm>
#include <csignal>

#include <sys/resource.h>

namespace Brimlo::Platform {

void prepareProcess() {
    // Every system allows as many, and no walk needs more.
    constexpr rlim_t kEnough = 8192;
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur < kEnough) {
        files.rlim_cur = std::min(files.rlim_max, kEnough);
        setrlimit(RLIMIT_NOFILE, &files);
    }
    // While SIGCHLD is ignored, the system discards the exit status of children.
    std::signal(SIGCHLD, SIG_DFL);
}

}  // namespace Brimlo::Platform
