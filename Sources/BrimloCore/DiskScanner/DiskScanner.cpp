#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/TreeScan.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Brimlo {

namespace {

using Platform::BlockRange;
using Platform::EntryStatus;
using Platform::UnsureBlocks;

/// What of the files of a place may stay: how many names of each hard-linked one lie in it, and the
/// blocks that others may share.
class SharedParts {
public:
    /// Whether the hard-linked file is met for the first time.
    bool isFirst(const SharedFile& file) {
        const auto [found, isNew] = files_.try_emplace(file.identity, file);
        found->second.here += isNew ? 0 : 1;
        return isNew;
    }

    /// Adds blocks of the file met last: of the linked one with this identity, or of another.
    void add(UnsureBlocks unsure, const std::optional<Platform::FileIdentity>& linked) {
        if (linked) {
            files_[*linked].unsure = std::move(unsure);
        } else {
            merge(unsure);
        }
    }

    /// Files with names outside, and the blocks of the others; null if nothing may stay.
    [[nodiscard]] SharedFiles shared() && {
        for (auto& [identity, file] : files_) {
            if (file.here < file.names) {
                shared_.files.push_back(std::move(file));
            } else {
                merge(file.unsure);
            }
        }
        join(shared_.unsure.ranges);
        return shared_.files.empty() && shared_.unsure.bytes == 0
                   ? nullptr
                   : std::make_shared<const SharedSpace>(std::move(shared_));
    }

private:
    void merge(const UnsureBlocks& more) {
        UnsureBlocks& all = shared_.unsure;
        all.bytes = Bytes::sum(all.bytes, more.bytes);
        all.unplaced = Bytes::sum(all.unplaced, more.unplaced);
        all.ranges.insert(all.ranges.end(), more.ranges.begin(), more.ranges.end());
    }

    /// Makes one of ranges that touch: the files of a folder often lie side by side.
    static void join(std::vector<BlockRange>& ranges) {
        std::ranges::sort(ranges);
        std::vector<BlockRange> joined;
        for (const BlockRange& range : ranges) {
            if (!joined.empty() && joined.back().device == range.device &&
                range.start <= joined.back().end) {
                joined.back().end = std::max(joined.back().end, range.end);
            } else {
                joined.push_back(range);
            }
        }
        ranges = std::move(joined);
    }

    std::unordered_map<Platform::FileIdentity, SharedFile> files_;
    SharedSpace shared_;
};

/// Which files of a place are asked whether others share their blocks.
enum class Asked { some, all };

/// The fast walk of a place, where the file system can tell whether files share blocks.
///
/// Asking takes longer than a status call. So the first walk asks the files that matter, and of the
/// small ones the first few and one in 32. Where one file shares blocks, mostly all of the place
/// do: a store, what was made from it, a snapshot, a compressed volume. There, a second walk asks
/// all.
class PlaceWalk {
public:
    explicit PlaceWalk(Asked asked)
        : asked_{asked} {}

    /// Nullopt when the folder can't be read that way.
    [[nodiscard]] std::optional<SpaceUse> run(const std::string& path) {
        std::vector<FolderPlace> waiting{FolderPlace{path}};
        bool isFirst = true;
        while (!waiting.empty() && !mustAskAll()) {
            const FolderPlace place = std::move(waiting.back());
            waiting.pop_back();
            const FolderPlace::Open open = place.open();
            if (!open && isFirst) {
                return std::nullopt;
            }
            if (open && !read(place, open, waiting) && isFirst && total_ == 0) {
                return std::nullopt;
            }
            isFirst = false;
        }
        return SpaceUse{.size = total_, .shared = std::move(parts_).shared()};
    }

    /// Whether the walk ended because a file shares blocks.
    [[nodiscard]] bool mustAskAll() const { return asked_ == Asked::some && isSharing_; }

private:
    /// One open folder.
    struct Folder {
        int number;
        Platform::BlockSharing sharing;
        std::optional<std::uint64_t> device = std::nullopt;  ///< Asked for when it is needed.
    };

    bool read(
        const FolderPlace& place,
        const FolderPlace::Open& open,
        std::vector<FolderPlace>& waiting) {
        const FolderPlace::Inside inside = place.inside(open);
        Folder folder{open->number(), Platform::blockSharing(open->number())};
        return Platform::readDirectory(
            open->number(),
            Platform::EntryDetail::allocation,
            [&](const Platform::DirectoryEntry& entry) {
                if (entry.isDirectory) {
                    waiting.push_back(inside.place(entry.name));
                } else {
                    add(entry, folder);
                }
            });
    }

    void add(const Platform::DirectoryEntry& entry, Folder& folder) {
        std::optional<Platform::FileIdentity> linked;
        if (entry.linkCount > 1) {
            if (!folder.device) {
                const auto status = Platform::entryStatus(folder.number, ".");
                folder.device = status ? status->identity.device : 0;
            }
            linked = {.device = *folder.device, .inode = entry.inode};
            if (!parts_.isFirst(
                    {.identity = *linked,
                     .bytes = entry.allocatedBytes,
                     .names = entry.linkCount})) {
                return;
            }
        }
        total_ = Bytes::sum(total_, entry.allocatedBytes);
        if (folder.sharing.isPossible && entry.allocatedBytes > 0) {
            parts_.add(unsureBlocks(entry, folder), linked);
        }
    }

    UnsureBlocks unsureBlocks(const Platform::DirectoryEntry& entry, const Folder& folder) {
        if (entry.length > 0 && entry.length <= folder.sharing.inlineLength) {
            return {.bytes = entry.allocatedBytes, .unplaced = entry.allocatedBytes, .ranges = {}};
        }
        if (!isAsked(entry)) {
            return {};
        }
        auto unsure = Platform::unsureBlocks(folder.number, entry.name, entry.allocatedBytes);
        isSharing_ = isSharing_ || unsure.bytes > 0;
        return unsure;
    }

    [[nodiscard]] bool isAsked(const Platform::DirectoryEntry& entry) {
        constexpr std::int64_t kAlwaysFrom = 131'072;
        constexpr int kFirst = 16;
        constexpr int kOneOf = 32;
        if (asked_ == Asked::all || entry.allocatedBytes >= kAlwaysFrom) {
            return true;
        }
        ++smallFiles_;
        return smallFiles_ <= kFirst || smallFiles_ % kOneOf == 0;
    }

    Asked asked_;
    std::int64_t total_ = 0;
    SharedParts parts_;
    std::int64_t smallFiles_ = 0;
    bool isSharing_ = false;
};

}  // namespace

DiskScanner::DiskScanner(std::shared_ptr<ScanControl> control, const ScanOptions& options)
    : control_{std::move(control)}
    , options_{options} {}

std::shared_ptr<FileNode> DiskScanner::scan(const std::string& root) {
    if (!Path::isUsable(root)) {
        return nullptr;
    }
    return TreeScan{*control_, options_, linkedFiles_}.run(Path::standardized(root));
}

SpaceUse DiskScanner::spaceUse(const std::string& path) {
    const auto status = Platform::entryStatus(path.c_str());
    if (!status || status->kind != EntryStatus::Kind::directory) {
        return status ? SpaceUse::of(path, *status) : SpaceUse{};
    }
    auto use = bulkSize(path);
    return use ? *std::move(use) : legacyQuickSize(path);
}

std::optional<SpaceUse> DiskScanner::bulkSize(const std::string& path) {
    PlaceWalk walk{Asked::some};
    auto use = walk.run(path);
    return walk.mustAskAll() ? PlaceWalk{Asked::all}.run(path) : std::move(use);
}

SpaceUse DiskScanner::legacyQuickSize(const std::string& path) {
    const auto top = Platform::entryStatus(path.c_str());
    if (!top || top->kind != EntryStatus::Kind::directory) {
        return top ? SpaceUse::of(path, *top) : SpaceUse{};
    }
    std::int64_t total = top->allocatedBytes;
    SharedParts linked;
    std::vector<std::string> waiting{path};
    while (!waiting.empty()) {
        const std::string folder = std::move(waiting.back());
        waiting.pop_back();
        for (const std::string& name :
             Folders::names(folder).value_or(std::vector<std::string>{})) {
            std::string entry = folder + "/" + name;
            const auto status = Platform::entryStatus(entry.c_str());
            if (!status) {
                continue;
            }
            if (status->kind != EntryStatus::Kind::directory) {
                const bool wasCounted =
                    status->linkCount > 1 && !linked.isFirst(
                                                 {.identity = status->identity,
                                                  .bytes = status->allocatedBytes,
                                                  .names = status->linkCount});
                total += wasCounted ? 0 : status->allocatedBytes;
            } else if (status->identity.device == top->identity.device) {
                total += status->allocatedBytes;
                waiting.push_back(std::move(entry));
            }
        }
    }
    return {.size = total, .shared = std::move(linked).shared()};
}

}  // namespace Brimlo
