#pragma once

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <memory>
#include <string>
#include <string_view>

namespace Brimlo {

/// The place of a folder that a walk has yet to open: a path relative to an open folder.
///
/// That saves the kernel the way from the root, reaches folders whose full path is too long to
/// open, and never follows a symlink that replaced a folder. A folder is kept open only while some
/// below it wait. Beyond a few nested ones the relative path grows instead, so that a deep tree
/// runs out of neither descriptors nor path length.
class FolderPlace {
public:
    using Open = std::shared_ptr<const Platform::Descriptor>;

    /// What the places of all folders in one folder share.
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

    /// The folder where a walk starts. A symlink there is followed.
    explicit FolderPlace(std::string path);

    /// Opens the folder; null when it can't be opened, or when it or a folder above it is a symlink
    /// now; `errno` tells why.
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
