#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <memory>
#include <string>
#include <string_view>

namespace Brimlo {

/// Where a walk finds a folder that it has yet to open: a relative path from one that is open.
///
/// That spares the kernel the way from the root, reaches folders whose whole path would be too
/// long to be opened, and never leads through a link that was put in the place of a folder. A
/// folder is kept open only as long as some below it wait. Beyond a few nested ones the relative
/// path grows instead, so that a deep tree runs out of neither descriptors nor the length of a
/// path.
class FolderPlace {
public:
    using Open = std::shared_ptr<const Platform::Descriptor>;

    /// What the places of all folders in one folder have in common.
    class Inside {
    public:
        /// The place of the folder called `name`.
        [[nodiscard]] FolderPlace place(std::string_view name) const;

    private:
        friend class FolderPlace;
        Open base_;
        std::string prefix_;
        int openAbove_ = 0;
    };

    /// The folder at which a walk starts. A link there is followed.
    explicit FolderPlace(std::string path);

    /// Opens the folder; null when it can't be, or when it or a folder above it is a link now, and
    /// `errno` tells why.
    [[nodiscard]] Open open() const;

    /// For the folders in this one, which is open as `self`.
    [[nodiscard]] Inside inside(const Open& self) const;

private:
    FolderPlace() = default;

    Open base_;  ///< Absent where a walk starts.
    std::string relative_;
    int openAbove_ = 0;  ///< Folders kept open on the way here.
};

}  // namespace Brimlo
