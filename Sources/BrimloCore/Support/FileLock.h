#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <string>

namespace Brimlo {

/// The exclusive right to read, change and write a file, against other threads and processes that
/// ask for it, too. Given up at the end of its scope.
class FileLock {
public:
    /// Waits for the advisory lock on `path` + ".lock", which is made if need be, and removes what
    /// a killed holder has left of new content for `path`.
    explicit FileLock(const std::string& path);

    /// False where there can be no lock: in a folder that can't be written to, or on a volume
    /// without locks.
    [[nodiscard]] bool isHeld() const { return static_cast<bool>(file_); }

private:
    Platform::Descriptor file_;
};

}  // namespace Brimlo
