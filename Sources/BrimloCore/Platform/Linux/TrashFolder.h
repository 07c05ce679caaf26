#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// A Trash of the freedesktop.org Trash Specification 1.0, with its folders open.
///
/// Each folder must belong to the user, not be a symlink, and not be writable by others; otherwise
/// it is not used.
struct TrashFolder {
    std::string path;  ///< The folder that holds "files" and "info".
    std::string base;  ///< The base of the paths in its trashinfo files; empty for absolute paths.
    Descriptor files;
    Descriptor info;

    /// The Trash of a folder's volume, created if missing: the home Trash if on the same mount,
    /// else the one at the mount point.
    [[nodiscard]] static std::expected<TrashFolder, Error> forItemsIn(
        int folder, std::string_view folderPath);

    /// The home Trash, not created if missing: ENOENT then.
    [[nodiscard]] static std::expected<TrashFolder, Error> home();

    /// The Trash whose "files" folder holds or held the item at `itemPath`; creates nothing.
    ///
    /// Fails with ENOENT when that is not a Trash of this user, or is gone from a mounted volume,
    /// and with ENXIO when the volume may not be mounted.
    [[nodiscard]] static std::expected<TrashFolder, Error> holding(const std::string& itemPath);

    /// Whether an open folder is the Trash, its "files" or its "info".
    [[nodiscard]] bool holds(int folder) const;
};

}  // namespace Brimlo::Platform
