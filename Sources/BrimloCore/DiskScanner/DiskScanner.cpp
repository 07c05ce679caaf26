#include "BrimloCore/DiskScanner/DiskScanner.h"

#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/TreeScan.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Path.h"

#include <unordered_set>
#include <utility>
#include <vector>

namespace Brimlo {

namespace {

using Platform::EntryStatus;

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

std::int64_t DiskScanner::quickSize(const std::string& path) {
    const auto status = Platform::entryStatus(path.c_str());
    if (!status || status->kind != EntryStatus::Kind::directory) {
        return status ? status->allocatedBytes : 0;
    }
    const std::optional<std::int64_t> size = bulkSize(path);
    return size ? *size : legacyQuickSize(path);
}

std::optional<std::int64_t> DiskScanner::bulkSize(const std::string& path) {
    std::int64_t total = 0;
    std::unordered_set<std::uint64_t> linkedFiles;
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
        const bool wasRead = Platform::readDirectory(
            open->number(),
            Platform::EntryDetail::allocation,
            [&](const Platform::DirectoryEntry& entry) {
                if (entry.isDirectory) {
                    waiting.push_back(inside.place(entry.name));
                } else if (entry.linkCount < 2 || linkedFiles.insert(entry.inode).second) {
                    total = Bytes::sum(total, entry.allocatedBytes);
                }
            });
        if (!wasRead && isFirst && total == 0) {
            return std::nullopt;
        }
        isFirst = false;
    }
    return total;
}

std::int64_t DiskScanner::legacyQuickSize(const std::string& path) {
    const auto top = Platform::entryStatus(path.c_str());
    if (!top || top->kind != EntryStatus::Kind::directory) {
        return top ? top->allocatedBytes : 0;
    }
    std::int64_t total = top->allocatedBytes;
    LinkedFiles linkedFiles;
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
                total += linkedFiles.isFirst(*status) ? status->allocatedBytes : 0;
            } else if (status->identity.device == top->identity.device) {
                total += status->allocatedBytes;
                waiting.push_back(std::move(entry));
            }
        }
    }
    return total;
}

}  // namespace Brimlo
