#pragma once

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

namespace Brimlo {

/// A folder that a walk has yet to open, as a path relative to an open folder.
///
/// Opening it that way is faster than from the root, reaches folders whose full path is too long,
/// and never follows a symlink that replaced a folder. A folder stays open only while folders below
/// it wait. Beyond a few nested ones the relative path grows instead, so that a deep tree exceeds
/// neither the limit of descriptors nor that of a path.
class FolderPlace {
public:
    using Open = std::shared_ptr<const Platform::Descriptor>;

    /// Shared by the places of all folders in one folder.
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

    /// How many threads of one walk the limit of descriptors allows; more than 16 gain nothing on
    /// any disk.
    [[nodiscard]] static unsigned mostWalkers();

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

/// The hard-linked files that a walk has met, so that it counts each once. Any thread.
class LinkedFiles {
public:
    /// Whether this is the first link of its file that the walk meets. A file with one link is not
    /// remembered.
    [[nodiscard]] bool isFirst(const Platform::EntryStatus& status) {
        if (status.linkCount < 2) {
            return true;
        }
        const std::lock_guard guard{lock_};
        return seen_.insert(status.identity).second;
    }

private:
    std::mutex lock_;
    std::unordered_set<Platform::FileIdentity> seen_;  // guarded by lock_
};

}  // namespace Brimlo
