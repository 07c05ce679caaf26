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

}  // namespace Brimlo::Platform

template <>
struct std::hash<Brimlo::Platform::FileIdentity> {
    std::size_t operator()(const Brimlo::Platform::FileIdentity& identity) const noexcept {
        constexpr std::uint64_t kOddConstant = 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>((identity.device * kOddConstant) ^ identity.inode);
    }
};
