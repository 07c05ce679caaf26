#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

namespace Brimlo::Platform {

namespace {

struct Row {
    const char* name;
    long code;
    int system;
};

/// The codes of <FoundationErrors.h> that a move or a removal can return.
constexpr Row kRows[] = {
    {"NSFileNoSuchFileError",           4,    ENOENT },
    {"NSFileLockingError",              255,  EBUSY  },
    {"NSFileReadNoPermissionError",     257,  EACCES },
    {"NSFileReadInvalidFileNameError",  258,  EINVAL },
    {"NSFileReadNoSuchFileError",       260,  ENOENT },
    {"NSFileWriteNoPermissionError",    513,  EACCES },
    {"NSFileWriteInvalidFileNameError", 514,  EINVAL },
    {"NSFileWriteFileExistsError",      516,  EEXIST },
    {"NSFileWriteOutOfSpaceError",      640,  ENOSPC },
    {"NSFileWriteVolumeReadOnlyError",  642,  EROFS  },
    {"NSUserCancelledError",            3072, EINTR  },
    {"NSFeatureUnsupportedError",       3328, ENOTSUP},
};

}  // namespace

Error cocoaError(std::string_view domain, long code, std::string description) {
    Error error{
        .domain = std::string{domain},
        .code = static_cast<int>(code),
        .description = std::move(description),
    };
    const auto* const row = std::ranges::find(kRows, code, &Row::code);
    if (domain == "NSPOSIXErrorDomain") {
        error.domain = kSystemErrorDomain;
    } else if (domain == "NSCocoaErrorDomain" && row != std::end(kRows)) {
        error.domain = kSystemErrorDomain;
        error.code = row->system;
    }
    if (error.description.empty()) {
        error.description = error.domain == kSystemErrorDomain
                                ? Error::fromSystem(error.code).description
                                : "the system refused without a reason";
    }
    return error;
}

}  // namespace Brimlo::Platform
