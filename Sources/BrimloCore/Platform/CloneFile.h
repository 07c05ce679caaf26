#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace Brimlo::Platform {

/// Makes a file called `name` in the open folder `folder` that shares its bytes on the disk with
/// the open file `original` until one of the two is written to, with the owner, mode, times and
/// extended attributes of `original` as far as the system lets them be set. Returns it open.
///
/// Fails with the system's code, and "clonefile failed: " before its words, when the volume knows
/// no clones, the two lie on different ones, or `name` is taken; nothing is left behind.
[[nodiscard]] std::expected<Descriptor, Error> cloneFile(
    int original, int folder, const std::string& name);

/// Gives the open file `taker` the times and the mode of `giver`, as far as they can be set.
void copyTimesAndMode(int giver, int taker);

/// Lets two entries of a folder take each other's place, in one step.
[[nodiscard]] std::expected<void, Error> exchange(
    int folder, const std::string& one, const std::string& other);

/// A piece of the disk that holds a part of a file.
struct Extent {
    std::uint64_t offset = 0;    ///< In the file.
    std::uint64_t position = 0;  ///< On the volume.
    std::uint64_t length = 0;

    bool operator==(const Extent&) const = default;
    auto operator<=>(const Extent&) const = default;
};

/// Where an open file lies, if other files share every byte of it. Two files of one volume with the
/// same extents are clones of each other. Nullopt when a part is the file's own, when the system
/// can't tell, and for a file without a byte on the disk.
[[nodiscard]] std::optional<std::vector<Extent>> sharedExtents(int file);

}  // namespace Brimlo::Platform
