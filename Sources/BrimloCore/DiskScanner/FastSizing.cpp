#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryReader.h"
#include "BrimloCore/Support/Folders.h"

#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace Brimlo {

namespace {

constexpr std::int64_t kBlockBytes = 512;
std::int64_t blocks(const struct stat& status) {
    return static_cast<std::int64_t>(status.st_blocks) * kBlockBytes;
}

}  // namespace

std::int64_t DiskScanner::quickSize(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return 0;
    }
    if (!S_ISDIR(status.st_mode)) {
        return blocks(status);
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
                } else if (entry.linkCount < 2 || linkedFiles.insert(entry.fileID).second) {
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
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return 0;
    }
    if (!S_ISDIR(status.st_mode)) {
        return blocks(status);
    }
    const dev_t device = status.st_dev;
    std::int64_t total = blocks(status);
    std::set<std::pair<dev_t, ino_t>> linkedFiles;
    std::vector<std::string> waiting{path};
    while (!waiting.empty()) {
        const std::string folder = std::move(waiting.back());
        waiting.pop_back();
        for (const std::string& name :
             Folders::names(folder).value_or(std::vector<std::string>{})) {
            std::string entry = folder + "/" + name;
            if (lstat(entry.c_str(), &status) != 0) {
                continue;
            }
            if (S_ISDIR(status.st_mode)) {
                if (status.st_dev == device) {
                    total += blocks(status);
                    waiting.push_back(std::move(entry));
                }
            } else if (
                status.st_nlink < 2 || linkedFiles.emplace(status.st_dev, status.st_ino).second) {
                total += blocks(status);
            }
        }
    }
    return total;
}

}  // namespace Brimlo
