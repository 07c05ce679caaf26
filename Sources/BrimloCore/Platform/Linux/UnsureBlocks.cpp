#include "BrimloCore/Platform/UnsureBlocks.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <new>
#include <optional>
#include <span>

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>

namespace Brimlo::Platform {

namespace {

constexpr std::uint64_t kBlock = 4096;  // The least that a compressed extent takes.

/// Passes on the extents of an open file; false when the file system can't tell. `flags` are those
/// of the request.
template <typename Visit>
bool readExtents(int file, std::uint32_t flags, const Visit& visit) {
    constexpr std::uint32_t kMost = 64;
    constexpr std::size_t kBytes = sizeof(fiemap) + kMost * sizeof(fiemap_extent);
    alignas(fiemap) std::array<std::byte, kBytes> answer{};
    auto* const head = new (answer.data()) fiemap;
    while (true) {
        head->fm_length = FIEMAP_MAX_OFFSET - head->fm_start;
        head->fm_flags = flags;
        head->fm_extent_count = kMost;
        if (ioctl(file, FS_IOC_FIEMAP, head) != 0) {
            return false;
        }
        const std::span extents{head->fm_extents, head->fm_mapped_extents};
        std::ranges::for_each(extents, visit);
        if (extents.empty() || (extents.back().fe_flags & FIEMAP_EXTENT_LAST) != 0) {
            return true;
        }
        head->fm_start = extents.back().fe_logical + extents.back().fe_length;
    }
}

/// The bytes of these ranges that another of them holds as well.
std::uint64_t repeated(std::vector<BlockRange>& ranges) {
    std::ranges::sort(ranges, {}, &BlockRange::start);
    std::uint64_t bytes = 0;
    std::uint64_t end = 0;
    for (const BlockRange& range : ranges) {
        bytes += std::min(range.end, std::max(range.start, end)) - range.start;
        end = std::max(end, range.end);
    }
    return bytes;
}

/// What may stay of the open file of this device; nullopt when that can't be told.
std::optional<UnsureBlocks> unsureBlocks(int file, std::uint64_t device) {
    UnsureBlocks unsure;
    std::vector<BlockRange> own;
    const auto add = [&](const fiemap_extent& extent) {
        const bool isShared = (extent.fe_flags & FIEMAP_EXTENT_SHARED) != 0;
        const bool isEncoded = (extent.fe_flags & FIEMAP_EXTENT_ENCODED) != 0;
        const bool isPlaced = (extent.fe_flags & FIEMAP_EXTENT_UNKNOWN) == 0;
        BlockRange range{device, extent.fe_physical, extent.fe_physical + extent.fe_length};
        if ((extent.fe_flags & FIEMAP_EXTENT_DATA_INLINE) != 0) {
            const auto blocks = (extent.fe_length + kBlock - 1) / kBlock;
            unsure.bytes += static_cast<std::int64_t>(blocks * kBlock);
            unsure.unplaced += static_cast<std::int64_t>(blocks * kBlock);
        } else if (isShared || isEncoded) {
            range.start += isShared ? 0 : std::min<std::uint64_t>(kBlock, extent.fe_length);
            unsure.bytes += static_cast<std::int64_t>(range.end - range.start);
            unsure.ranges.push_back(range);
        } else if (isPlaced) {
            own.push_back(range);
        }
    };
    // Not synced: what lies in memory alone is no other file's.
    if (!readExtents(file, 0, add)) {
        return std::nullopt;
    }
    // Btrfs does not call an extent shared of which one file has several parts.
    unsure.bytes += static_cast<std::int64_t>(repeated(own));
    return unsure;
}

BlockSharing sharingOf(const struct statfs& status) {
    // OCFS2 and bcachefs; <linux/magic.h> of Debian 12 lacks the second.
    constexpr std::array<std::uint32_t, 3> kSharing{XFS_SUPER_MAGIC, 0x7461636F, 0xCA451A4E};
    constexpr std::int64_t kInline = 2048;  // Of btrfs, unless it was mounted otherwise.
    const auto type = static_cast<std::uint32_t>(status.f_type);
    if (type == BTRFS_SUPER_MAGIC) {
        return {.isPossible = true, .inlineLength = kInline};
    }
    return {.isPossible = std::ranges::count(kSharing, type) > 0};
}

}  // namespace

BlockSharing blockSharing(int folder) {
    struct statfs status{};
    return fstatfs(folder, &status) == 0 ? sharingOf(status) : BlockSharing{};
}

BlockSharing blockSharing(const std::string& path) {
    struct statfs status{};
    return statfs(path.c_str(), &status) == 0 ? sharingOf(status) : BlockSharing{};
}

UnsureBlocks unsureBlocks(int folder, const char* name, std::int64_t allocatedBytes) {
    // Should a pipe or a device have taken the name meanwhile, opening it must not wait.
    const Descriptor file{
        openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)};
    struct stat status{};
    if ((!file && errno == ELOOP) ||
        (file && fstat(file.number(), &status) == 0 && !S_ISREG(status.st_mode))) {
        return {};
    }
    auto unsure = file ? unsureBlocks(file.number(), status.st_dev) : std::nullopt;
    if (!unsure) {
        return {.bytes = allocatedBytes, .unplaced = allocatedBytes, .ranges = {}};
    }
    unsure->bytes = std::min(unsure->bytes, allocatedBytes);
    return *std::move(unsure);
}

std::optional<std::vector<Extent>> sharedExtents(int file) {
    // Extents without a position of their own on the volume.
    constexpr std::uint32_t kNowhere = FIEMAP_EXTENT_UNKNOWN | FIEMAP_EXTENT_NOT_ALIGNED;
    std::vector<Extent> result;
    bool areAllShared = true;
    const auto add = [&](const fiemap_extent& extent) {
        areAllShared = areAllShared && (extent.fe_flags & FIEMAP_EXTENT_SHARED) != 0 &&
                       (extent.fe_flags & kNowhere) == 0;
        result.push_back({extent.fe_logical, extent.fe_physical, extent.fe_length});
    };
    if (!readExtents(file, FIEMAP_FLAG_SYNC, add) || !areAllShared || result.empty()) {
        return std::nullopt;
    }
    return result;
}

}  // namespace Brimlo::Platform
