#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string>

/// Replacing a file by a clone of another one.
namespace Brimlo::Platform {

/// Whether the file system of `path` may have clones. Only its type is looked at, so that one which
/// was made without clones counts, too. False when `path` is not there.
[[nodiscard]] bool mayClone(const std::string& path);

/// Creates a file `name` in the open folder `folder` as a clone of the open file `original` (a
/// reflink), with its owner, mode, times and extended attributes as far as the system lets them be
/// set. Returns it open.
///
/// Fails with the system's error when the volume has no clones, the two are on different volumes,
/// or `name` exists; nothing is left behind.
[[nodiscard]] std::expected<Descriptor, Error> cloneFile(
    int original, int folder, const std::string& name);

/// Exchanges two entries of a folder in one step.
[[nodiscard]] std::expected<void, Error> exchange(
    int folder, const std::string& one, const std::string& other);

/// Keeps others from writing to the open file `file` until it is closed or somebody has waited too
/// long (on Linux 45 seconds). `file` is open for reading only.
///
/// Fails when a program has the file open for writing, and when the system refuses. Does nothing on
/// a system without such leases.
[[nodiscard]] std::expected<void, Error> holdWriters(int file);

/// Whether writers are still kept out and none waits. True on a system without such leases.
[[nodiscard]] bool isUndisturbed(int file);

}  // namespace Brimlo::Platform
