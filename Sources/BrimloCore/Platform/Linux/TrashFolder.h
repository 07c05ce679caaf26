#pragma once

#include "BrimloCore/Models/Error.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <expected>
#include <string>
#include <string_view>

namespace Brimlo::Platform {

/// One Trash of the freedesktop.org Trash Specification 1.0, its folders open.
///
/// Each folder is the user's own, no link, and closed to the writing of others; else it is not
/// used.
struct TrashFolder {
    std::string path;  ///< The folder that holds "files" and "info".
    std::string base;  ///< What the paths in its notes are relative to; empty for absolute.
    Descriptor files;
    Descriptor info;

    /// The Trash of the volume of a folder, made when it is missing: the home Trash where that is
    /// on the same mount, else the one at the top of the mount.
    [[nodiscard]] static std::expected<TrashFolder, Error> forItemsIn(
        int folder, std::string_view folderPath);

    /// The home Trash, not made when it is missing: ENOENT then.
    [[nodiscard]] static std::expected<TrashFolder, Error> home();

    /// The Trash in whose "files" the item at `itemPath` lies or lay; nothing is made.
    ///
    /// Fails with ENOENT when that is no Trash of this user's, or is gone from a volume that is
    /// there, and with ENXIO when the volume may not be there.
    [[nodiscard]] static std::expected<TrashFolder, Error> holding(const std::string& itemPath);

    /// Whether an open folder is the Trash, its "files" or its "info".
    [[nodiscard]] bool holds(int folder) const;
};

}  // namespace Brimlo::Platform
