#include "BrimloCore/Platform/Posix/ReasonNotMoved.h"

#include "BrimloCore/Models/Error.h"

#include <cctype>
#include <cerrno>

namespace Brimlo::Platform {

std::string reasonNotMoved(int code) {
    switch (code) {
        case EXDEV:
            return "it lies on another volume or layer than its Trash, and nothing is copied there";
        case EACCES:
        case EPERM:
            return "no permission to move it";
        case EROFS:
            return "its volume can't be written to";
        case ENOSPC:
        case EDQUOT:
            return "the disk is too full to move it to the Trash";
        case ENOENT:
            return "no longer exists";
        case EBUSY:
            return "it is in use by the system";
        case EINVAL:
            return "its file system can't move it without the danger of overwriting";
        case ELOOP:
        case ENOTDIR:
            return "the folder around it changed meanwhile";
        default: {
            std::string words = Error::fromSystem(code).description;
            words.front() =
                static_cast<char>(std::tolower(static_cast<unsigned char>(words.front())));
            return words;
        }
    }
}

}  // namespace Brimlo::Platform
