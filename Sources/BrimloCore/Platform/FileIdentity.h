#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// The identity of a file system object.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;

    /// The device as a signed 32-bit decimal number, ":", the inode in decimal.
    [[nodiscard]] std::string text() const;

    /// The identity of the entry at `path`, a symlink's own; nullopt when it can't be read.
    [[nodiscard]] static std::optional<FileIdentity> of(const std::string& path);
};

}  // namespace Brimlo::Platform
