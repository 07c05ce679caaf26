#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Platform/DirectoryReader.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Support/Folders.h"

#include <memory>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

// The fast walk opens each folder relative to one that is open already, which spares the kernel
// the way from the root, and it keeps that one open only as long as children of it are waiting.
// Below kMostOpen nested folders the children are reached by a longer relative path instead, so
// that a deep chain runs out of neither descriptors nor the length of a path.

namespace Brimlo {

namespace {

using Platform::Descriptor;

constexpr std::int64_t kBlockBytes = 512;
constexpr int kMostOpen = 64;
constexpr std::size_t kLongestRelative = 3000;

/// A folder that waits to be read.
struct Waiting {
    std::shared_ptr<const Descriptor> base;  ///< Absent for the folder the walk starts at.
    std::string relative;                    ///< Its path from `base`.
    int open = 0;                            ///< Folders kept open on the way to it.
};

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
    std::vector<Waiting> waiting;
    waiting.push_back({.base = nullptr, .relative = path, .open = 0});
    bool isFirst = true;
    while (!waiting.empty()) {
        const Waiting folder = std::move(waiting.back());
        waiting.pop_back();
        const auto descriptor = std::make_shared<const Descriptor>(openat(
            folder.base ? folder.base->number() : AT_FDCWD,
            folder.relative.c_str(),
            O_RDONLY | O_DIRECTORY | O_CLOEXEC | (isFirst ? 0 : O_NOFOLLOW)));
        if (!*descriptor) {
            if (isFirst) {
                return std::nullopt;
            }
            continue;
        }
        const bool extendsPath =
            folder.open >= kMostOpen && folder.relative.size() < kLongestRelative;
        const bool wasRead = Platform::readDirectory(
            descriptor->number(),
            Platform::EntryDetail::allocation,
            [&](const Platform::DirectoryEntry& entry) {
                if (!entry.isDirectory) {
                    if (entry.linkCount < 2 || linkedFiles.insert(entry.fileID).second) {
                        total += entry.allocatedBytes;
                    }
                } else if (extendsPath) {
                    waiting.push_back(
                        {folder.base, folder.relative + "/" + entry.name, folder.open});
                } else {
                    waiting.push_back({descriptor, entry.name, folder.open + 1});
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
