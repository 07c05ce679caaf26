#include "BrimloCore/Platform/macOS/MacFolder.h"

#include "BrimloCore/Platform/Posix/OpenFolder.h"

#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo::Platform {

std::expected<Descriptor, Error> openMacFolder(std::string_view path) {
    auto folder = openFolder(path);
    if (!folder) {
        // /etc, /tmp and /var are links to the same names in /private.
        if (auto other = openFolder("/private" + std::string{path})) {
            return other;
        }
    }
    return folder;
}

void syncFolder(int folder) {
    // One that was opened for searching alone can't be synced.
    const Descriptor readable{openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (readable) {
        fsync(readable.number());
    }
}

}  // namespace Brimlo::Platform
