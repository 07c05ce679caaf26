#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>
#include <optional>

namespace Brimlo::Platform {

/// The version of a file, as finely as the file system records times.
struct FileVersion {
    /// A timestamp.
    struct Time {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        bool operator==(const Time&) const = default;
    };

    FileIdentity identity;
    std::int64_t length = 0;
    std::uint64_t names = 0;  ///< Number of hard links.
    Time written;             ///< When its content changed.
    Time changed;             ///< When anything about it changed, including its name.

    bool operator==(const FileVersion&) const = default;

    /// The version of an open file; nullopt when it is not a regular file.
    [[nodiscard]] static std::optional<FileVersion> of(int file);

    /// Whether `later` is the same file with the same content, whatever its name.
    [[nodiscard]] bool holdsTheBytesOf(const FileVersion& later) const {
        return identity == later.identity && length == later.length && written == later.written;
    }
};

}  // namespace Brimlo::Platform
