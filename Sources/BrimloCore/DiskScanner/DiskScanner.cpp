#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/TreeScan.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace Brimlo {

namespace {

using Platform::EntryStatus;

/// The hard-linked files of a place, and how many of their names lie in it.
class LinkedNames {
public:
    /// Whether the file is met for the first time.
    bool isFirst(const SharedFile& file) {
        const auto [found, isNew] = files_.try_emplace(file.identity, file);
        found->second.here += isNew ? 0 : 1;
        return isNew;
    }

    /// Those with names outside; null if there are none.
    [[nodiscard]] SharedFiles shared() const {
        std::vector<SharedFile> files;
        for (const auto& [identity, file] : files_) {
            if (file.here < file.names) {
                files.push_back(file);
            }
        }
        return files.empty() ? nullptr
                             : std::make_shared<const std::vector<SharedFile>>(std::move(files));
    }

private:
    std::unordered_map<Platform::FileIdentity, SharedFile> files_;
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
        return status ? SpaceUse::of(*status) : SpaceUse{};
    }
    auto use = bulkSize(path);
    return use ? *std::move(use) : legacyQuickSize(path);
}

std::optional<SpaceUse> DiskScanner::bulkSize(const std::string& path) {
    std::int64_t total = 0;
    LinkedNames linked;
    std::vector<FolderPlace> waiting{FolderPlace{path}};
    bool isFirst = true;
    while (!waiting.empty()) {
        const FolderPlace folder = std::move(waiting.back());
        waiting.pop_back();
        const FolderPlace::Open open = folder.open();
        if (!open) {
            if (isFirst) {
                return std::nullopt;
            }
            continue;
        }
        const FolderPlace::Inside inside = folder.inside(open);
        std::optional<std::uint64_t> device;  // Asked for where a file has several names.
        const bool wasRead = Platform::readDirectory(
            open->number(),
            Platform::EntryDetail::allocation,
            [&](const Platform::DirectoryEntry& entry) {
                if (entry.isDirectory) {
                    waiting.push_back(inside.place(entry.name));
                    return;
                }
                if (entry.linkCount > 1) {
                    if (!device) {
                        const auto status = Platform::entryStatus(open->number(), ".");
                        device = status ? status->identity.device : 0;
                    }
                    if (!linked.isFirst({
                            .identity = {.device = *device, .inode = entry.inode},
                            .bytes = entry.allocatedBytes,
                            .names = entry.linkCount
                    })) {
                        return;
                    }
                }
                total = Bytes::sum(total, entry.allocatedBytes);
            });
        if (!wasRead && isFirst && total == 0) {
            return std::nullopt;
        }
        isFirst = false;
    }
    return SpaceUse{.bytes = total, .shared = linked.shared()};
}

SpaceUse DiskScanner::legacyQuickSize(const std::string& path) {
    const auto top = Platform::entryStatus(path.c_str());
    if (!top || top->kind != EntryStatus::Kind::directory) {
        return top ? SpaceUse::of(*top) : SpaceUse{};
    }
    std::int64_t total = top->allocatedBytes;
    LinkedNames linked;
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
    return {.bytes = total, .shared = linked.shared()};
}

}  // namespace Brimlo
