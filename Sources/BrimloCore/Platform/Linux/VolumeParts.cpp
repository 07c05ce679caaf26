#include "BrimloCore/Platform/VolumeParts.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/Trash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <unordered_set>
#include <utility>

#include <fcntl.h>
#include <linux/btrfs.h>
#include <linux/btrfs_tree.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

Descriptor opened(const std::string& path, int flags) {
    return Descriptor{open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK)};
}

std::int64_t bytes(std::uint64_t count, std::uint64_t unit) {
    return static_cast<std::int64_t>(count * unit);
}

// ---- XFS ----------------------------------------------------------------------------------------

/// The kernel's `xfs_fsop_geom_v4`; its header is not among those that every system has.
struct XfsGeometry {
    std::uint32_t blockBytes;
    std::uint32_t realtimeExtent;
    std::uint32_t groupBlocks;
    std::uint32_t groups;
    std::uint32_t logBlocks;
    std::uint32_t sectorBytes;
    std::uint32_t inodeBytes;
    std::uint32_t mostInodesPercent;
    std::uint64_t blocks;
    std::array<std::uint64_t, 2> realtime;
    std::uint64_t logStart;
    std::array<std::uint8_t, 16> id;
    std::array<std::uint32_t, 2> stripe;
    std::int32_t version;
    std::uint32_t features;
    std::array<std::uint32_t, 4> more;
};

/// `xfs_fsop_counts`.
struct XfsCounts {
    std::array<std::uint64_t, 3> free;
    std::uint64_t inodes;
};

constexpr unsigned long kXfsGeometry = _IOR('X', 124, XfsGeometry);
constexpr unsigned long kXfsCounts = _IOR('X', 113, XfsCounts);
constexpr std::uint32_t kFreeInodeTree = 1U << 17U;
constexpr std::uint32_t kReverseMap = 1U << 19U;
constexpr std::uint32_t kSharedExtents = 1U << 20U;

/// The blocks of a B+tree with so many records, each block half full, as the kernel reserves them.
std::uint64_t treeBlocks(
    const XfsGeometry& geometry,
    std::uint64_t records,
    std::uint64_t recordBytes,
    std::uint64_t keyBytes) {
    constexpr std::uint64_t kHeader = 56;
    const auto half = [&](std::uint64_t entry) {
        return std::max<std::uint64_t>(2, (geometry.blockBytes - kHeader) / entry / 2);
    };
    std::uint64_t level = (records + half(recordBytes) - 1) / half(recordBytes);
    std::uint64_t sum = level;
    while (level > 1) {
        level = (level + half(keyBytes) - 1) / half(keyBytes);
        sum += level;
    }
    return sum;
}

/// What each allocation group keeps back, so that its trees can grow on a full disk.
std::uint64_t keptForTrees(const XfsGeometry& geometry) {
    constexpr std::uint64_t kInodesInRecord = 64;
    constexpr std::uint64_t kShareOfReverseMap = 100;
    const std::uint64_t log = geometry.logStart != 0 ? geometry.logBlocks : 0;
    const std::uint64_t blocks =
        (geometry.blocks - std::min(log, geometry.blocks)) / geometry.groups;
    std::uint64_t kept = 0;
    if ((geometry.features & kFreeInodeTree) != 0) {
        const std::uint64_t inodes = blocks * (geometry.blockBytes / geometry.inodeBytes);
        kept += treeBlocks(geometry, inodes / kInodesInRecord, 16, 8);
    }
    if ((geometry.features & kReverseMap) != 0) {
        kept += std::max(blocks / kShareOfReverseMap, treeBlocks(geometry, blocks, 24, 44));
    }
    if ((geometry.features & kSharedExtents) != 0) {
        kept += treeBlocks(geometry, blocks, 12, 8);
    }
    return kept * geometry.groups;
}

std::vector<FileSystemPart> xfsParts(int folder) {
    constexpr std::uint64_t kMostInPool = 8192;
    constexpr std::uint64_t kShareOfPool = 20;
    XfsGeometry geometry{};
    XfsCounts counts{};
    if (ioctl(folder, kXfsGeometry, &geometry) != 0 || ioctl(folder, kXfsCounts, &counts) != 0 ||
        geometry.groups == 0 || geometry.inodeBytes == 0) {
        return {};
    }
    const std::uint64_t pool = std::min(geometry.blocks / kShareOfPool, kMostInPool);
    return {
        {.name = "Inodes of XFS",                             .bytes = bytes(counts.inodes, geometry.inodeBytes)},
        {.name = "Kept by XFS for its trees and a full disk",
         .bytes = bytes(pool + keptForTrees(geometry),                                      geometry.blockBytes)},
    };
}

// ---- Btrfs --------------------------------------------------------------------------------------

constexpr std::uint64_t kGlobalReserve = 1ULL << 49U;

/// How many bytes of the disks one byte of such data takes.
std::uint64_t copies(std::uint64_t flags) {
    constexpr std::uint64_t kTwo =
        BTRFS_BLOCK_GROUP_DUP | BTRFS_BLOCK_GROUP_RAID1 | BTRFS_BLOCK_GROUP_RAID10;
    return (flags & BTRFS_BLOCK_GROUP_RAID1C4) != 0   ? 4
           : (flags & BTRFS_BLOCK_GROUP_RAID1C3) != 0 ? 3
           : (flags & kTwo) != 0                      ? 2
                                                      : 1;
}

std::vector<btrfs_ioctl_space_info> btrfsSpaces(int folder) {
    constexpr std::size_t kMost = 64;
    // Slots, spaces, then of each space its three numbers.
    std::array<std::uint64_t, 2 + (3 * kMost)> answer{kMost};
    static_assert(sizeof(btrfs_ioctl_space_info) == 3 * sizeof(std::uint64_t));
    if (ioctl(folder, BTRFS_IOC_SPACE_INFO, answer.data()) != 0) {
        return {};
    }
    std::vector<btrfs_ioctl_space_info> spaces;
    for (std::size_t i = 0; i < std::min<std::size_t>(answer[1], kMost); ++i) {
        const std::uint64_t* const space = &answer[2 + (3 * i)];
        spaces.push_back({.flags = space[0], .total_bytes = space[1], .used_bytes = space[2]});
    }
    return spaces;
}

std::vector<FileSystemPart> btrfsParts(int folder) {
    std::uint64_t metadata = 0;
    std::uint64_t reserve = 0;
    std::uint64_t ofData = 1;
    for (const btrfs_ioctl_space_info& space : btrfsSpaces(folder)) {
        if ((space.flags & kGlobalReserve) != 0) {
            reserve = space.total_bytes;
        } else if ((space.flags & BTRFS_BLOCK_GROUP_DATA) != 0) {
            ofData = std::max(ofData, copies(space.flags));
        } else {
            metadata += space.used_bytes * copies(space.flags);
        }
    }
    // The file system counts its disks in bytes of data.
    return {
        {.name = "Trees of Btrfs",                .bytes = bytes(metadata / ofData, 1)},
        {.name = "Kept by Btrfs for a full disk", .bytes = bytes(reserve,           1)},
    };
}

// ---- Deleted files ------------------------------------------------------------------------------

std::string lineOf(const fs::path& file) {
    std::ifstream stream{file};
    std::string line;
    std::getline(stream, line);
    return line;
}

/// The open files of one process.
class OpenFiles {
public:
    explicit OpenFiles(fs::path process)
        : process_{std::move(process)} {}

    /// Passes on the deleted ones; false when they may not be read.
    template <typename Visit>
    [[nodiscard]] bool visitDeleted(const Visit& visit) const {
        const bool isTold = visitLinks("fd", visit);
        // Those that are only mapped into memory.
        static_cast<void>(visitLinks("map_files", visit));
        return isTold;
    }

    [[nodiscard]] std::string name() const {
        return lineOf(process_ / "comm") + " (" + process_.filename().string() + ")";
    }

private:
    template <typename Visit>
    [[nodiscard]] bool visitLinks(const char* folder, const Visit& visit) const {
        std::error_code error;
        for (fs::directory_iterator link{process_ / folder, error}, end; !error && link != end;
             link.increment(error)) {
            std::error_code unread;
            Stat status{};
            if (fs::read_symlink(link->path(), unread).native().ends_with(" (deleted)") &&
                stat(link->path().c_str(), &status) == 0 && status.st_nlink == 0) {
                visit(status);
            }
        }
        return error.value() != EACCES && error.value() != EPERM;
    }

    fs::path process_;
};

bool isProcess(const fs::path& folder) {
    const std::string name = folder.filename().string();
    return std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; }) &&
           !lineOf(folder / "cmdline").empty();  // The kernel's own have none.
}

}  // namespace

std::optional<VolumeUse> volumeUse(const std::string& path) {
    struct statvfs status{};
    if (statvfs(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return VolumeUse{
        .total = bytes(status.f_blocks, status.f_frsize),
        .free = bytes(status.f_bfree, status.f_frsize),
        .available = bytes(status.f_bavail, status.f_frsize),
        .files = bytes(status.f_files, 1),
        .freeFiles = bytes(status.f_ffree, 1),
    };
}

VolumeView viewOfVolume(const std::string& path) {
    const Descriptor place = opened(path, O_PATH);
    if (!place) {
        return {};
    }
    const auto whole =
        MountTable::read().wholeOf(mountID(place.number()), [](const MountTable::Mount& mount) {
            const Descriptor top = opened(mount.point + "/", O_PATH | O_DIRECTORY);
            return top && mountID(top.number()) == mount.id;
        });
    VolumeView view;
    for (const MountTable::Mount& mount : whole) {
        view.tops.push_back(mount.point.empty() ? "/" : mount.point);
        view.isWhole = view.isWhole || mount.root.empty();
    }
    if (view.tops.empty()) {
        view.tops.emplace_back("/");  // The table leaves out the mount that a changed root is on.
    }
    return view;
}

std::vector<std::string> trashFolders(const std::string& top) {
    const std::string user = std::to_string(getuid());
    const std::string folder = top == "/" ? "" : top;
    return {homeTrash(), folder + "/.Trash/" + user, folder + "/.Trash-" + user};
}

bool isInSnapshot(int folder) {
    btrfs_ioctl_get_subvol_info_args info{};
    // Where no other root is filed after this one, the kernel answers with 1.
    return ioctl(folder, BTRFS_IOC_GET_SUBVOL_INFO, &info) >= 0 &&
           std::ranges::any_of(info.parent_uuid, [](auto byte) { return byte != 0; });
}

std::vector<FileSystemPart> fileSystemParts(const std::string& path) {
    const Descriptor folder = opened(path, O_RDONLY | O_DIRECTORY);
    struct statfs status{};
    if (!folder || fstatfs(folder.number(), &status) != 0) {
        return {};
    }
    switch (status.f_type) {
        case XFS_SUPER_MAGIC:
            return xfsParts(folder.number());
        case BTRFS_SUPER_MAGIC:
            return btrfsParts(folder.number());
        default:
            return {};
    }
}

DeletedFiles deletedOpenFiles() {
    DeletedFiles deleted;
    std::unordered_set<FileIdentity> seen;
    std::error_code error;
    for (fs::directory_iterator process{"/proc", error}, end; !error && process != end;
         process.increment(error)) {
        if (!isProcess(process->path())) {
            continue;
        }
        const OpenFiles files{process->path()};
        const bool isTold = files.visitDeleted([&](const Stat& status) {
            if (seen.insert(identityOf(status)).second) {
                deleted.files.push_back(
                    {.process = files.name(),
                     .identity = identityOf(status),
                     .bytes = status.st_blocks * kBlockBytes});
            }
        });
        deleted.unaskedProcesses += isTold ? 0 : 1;
    }
    return deleted;
}

}  // namespace Brimlo::Platform
