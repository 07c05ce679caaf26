#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <string>

namespace Brimlo {

/// An exclusive advisory lock for reading, changing and writing a file, against other threads and
/// processes that ask for it, too. Released at the end of its scope.
class FileLock {
public:
    /// Waits for the lock on `path` + ".lock", which is created if missing, and removes temporary
    /// files that a killed holder left for `path`.
    explicit FileLock(const std::string& path);

    /// False when there can be no lock: in a folder that can't be written to, or on a volume
    /// without locks.
    [[nodiscard]] bool isHeld() const { return static_cast<bool>(file_); }

private:
    Platform::Descriptor file_;
};

}  // namespace Brimlo
