#pragma once

#include "BrimloCore/Platform/FileIdentity.h"

#include <cstdint>
#include <optional>

namespace Brimlo::Platform {

/// What tells one state of a file from a later one, as finely as the file system notes times.
struct FileVersion {
    /// A point in time as the system counts it.
    struct Time {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        bool operator==(const Time&) const = default;
    };

    FileIdentity identity;
    std::int64_t length = 0;
    std::uint64_t names = 0;  ///< How many the file has.
    Time written;             ///< When its bytes changed.
    Time changed;             ///< When anything of it changed, its place and name included.

    bool operator==(const FileVersion&) const = default;

    /// That of an open file; nullopt when it is no regular file.
    [[nodiscard]] static std::optional<FileVersion> of(int file);

    /// Whether `later` is the same file with the same bytes, whatever became of its name.
    [[nodiscard]] bool holdsTheBytesOf(const FileVersion& later) const {
        return identity == later.identity && length == later.length && written == later.written;
    }
};

}  // namespace Brimlo::Platform
