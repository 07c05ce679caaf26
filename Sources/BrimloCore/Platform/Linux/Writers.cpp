#include "BrimloCore/Platform/Writers.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>

// A lease: it is granted only while nobody has the file open for writing, and who opens it for
// writing later waits until it is given back.

namespace Brimlo::Platform {

std::expected<void, Error> holdWriters(int file) {
    // Else the first who waits would end this process: that is what SIGIO does by default.
    if (fcntl(file, F_SETSIG, SIGURG) == 0 && fcntl(file, F_SETLEASE, F_RDLCK) == 0) {
        return {};
    }
    Error error = Error::fromSystem(errno);
    if (error.code == EAGAIN) {
        error.description = "is open for writing in another program";
    }
    return std::unexpected(std::move(error));
}

bool isUndisturbed(int file) {
    return fcntl(file, F_GETLEASE) == F_RDLCK;
}

}  // namespace Brimlo::Platform
