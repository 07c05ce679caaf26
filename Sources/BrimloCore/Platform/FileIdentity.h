#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// The identity of a file system object.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    auto operator<=>(const FileIdentity&) const = default;

    /// The device as a signed 32-bit decimal number, ":", the inode in decimal.
    [[nodiscard]] std::string text() const;

    /// The identity of the entry at `path`, a symlink's own; nullopt when it can't be read.
    [[nodiscard]] static std::optional<FileIdentity> of(const std::string& path);
};

/// The version of a file, as finely as the file system records times.
struct FileVersion {
    /// A timestamp.
    struct Time {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;

        auto operator<=>(const Time&) const = default;
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

template <>
struct std::hash<Brimlo::Platform::FileIdentity> {
    std::size_t operator()(const Brimlo::Platform::FileIdentity& identity) const noexcept {
        constexpr std::uint64_t kOddConstant = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>((identity.device * kOddConstant) ^ identity.inode);
    }
};
