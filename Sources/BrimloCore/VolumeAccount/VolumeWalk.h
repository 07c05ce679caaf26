#pragma once

#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/WorkCrew.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/VolumeAccount/VolumeAccount.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Brimlo {

/// Counts the files of a volume by area. One job reads one folder, and nothing is kept of a file
/// but that of one with several names, so that memory grows with these alone.
class VolumeWalk {
public:
    /// Of `home` each folder is an area of its own. Both are paths without symlinks.
    VolumeWalk(ScanControl& control, std::string home, std::vector<std::string> trashes);

    /// Counts what lies below a mount point, without entering another mount. Blocks.
    void count(const std::string& top);

    /// The areas, the Trash and the files with names in several areas.
    [[nodiscard]] std::vector<AccountLine> lines() const;
    /// The snapshots that were met, sorted.
    [[nodiscard]] std::vector<std::string> snapshots() const;
    /// Whether a file is on the volume, whose subvolumes have devices of their own.
    [[nodiscard]] bool holds(const Platform::FileIdentity& file) const {
        return devices_.contains(file.device);
    }

private:
    struct Subfolder;
    struct Folder;
    struct Job {
        std::shared_ptr<const Folder> parent;
        std::size_t index = 0;  ///< Of the folder among the parent's subfolders.
    };
    using Crew = WorkCrew<Job>;

    /// A file with several names, and the area of all that were met, or `kSeveral`.
    struct Linked {
        std::size_t area = 0;
        std::int64_t bytes = 0;
    };
    struct Found;

    void enter(const Folder& parent, const Subfolder& folder, Crew::Member& member);
    void read(
        Folder folder,
        const FolderPlace& place,
        const FolderPlace::Open& open,
        Crew::Member& member);
    void add(std::size_t area, const Found& found);
    [[nodiscard]] std::size_t areaOf(const std::string& path, const Folder& parent);
    [[nodiscard]] bool isOnMount(const Platform::EntryStatus& status) const;
    [[nodiscard]] bool isLeftOut(
        const std::string& path, std::uint64_t device, const FolderPlace::Open& open);

    ScanControl& control_;
    const std::string home_;
    const std::vector<std::string> trashes_;
    Platform::EntryStatus top_;
    mutable std::mutex lock_;
    std::vector<AccountLine> areas_;  // this and all below by lock_
    std::unordered_map<Platform::FileIdentity, Linked> linked_;
    std::unordered_set<std::uint64_t> devices_;
    std::vector<std::string> snapshots_;
};

}  // namespace Brimlo
