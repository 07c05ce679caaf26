#include "BrimloCore/Platform/Processes.h"

#include <algorithm>
#include <csignal>

#include <sys/resource.h>

namespace Brimlo::Platform {

void prepareProcess() {
    // No system refuses so many, and no walk comes near.
    constexpr rlim_t kEnough = 8192;
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur < kEnough) {
        files.rlim_cur = std::min(files.rlim_max, kEnough);
        setrlimit(RLIMIT_NOFILE, &files);
    }
    // Were it ignored, the system would throw away how each child ended.
    std::signal(SIGCHLD, SIG_DFL);
}

}  // namespace Brimlo::Platform
