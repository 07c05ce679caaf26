#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Brimlo::Platform {

/// What tells one object of the file system from another.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;

    /// The device as a signed 32-bit decimal number, ":", the inode in decimal.
    [[nodiscard]] std::string text() const;

    /// That of the entry at `path`, a link's own; nullopt when it can't be looked at.
    [[nodiscard]] static std::optional<FileIdentity> of(const std::string& path);
};

}  // namespace Brimlo::Platform
