#include "BrimloCore/Platform/SyncVolume.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Platform {

bool syncVolume(const std::string& folder) {
    const Descriptor opened{open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    return opened && syncfs(opened.number()) == 0;
}

}  // namespace Brimlo::Platform
