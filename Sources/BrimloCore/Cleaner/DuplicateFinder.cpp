#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include "BrimloCore/Cleaner/FileReader.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/CloneFile.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Sha256.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

// Four stages, each on the result of the one before: group files by length, drop further names of a
// file already met, compare a digest of beginning and end, compare a digest of all bytes. Most
// files are never read, and most others only 128 KiB of them.

namespace Brimlo {

std::int64_t DuplicateGroup::wastedBytes() const {
    return paths.empty() ? 0 : Bytes::product(size, std::ssize(paths) - 1);
}

namespace DuplicateFinder {

namespace {

struct File {
    std::string path;
    Platform::FileIdentity identity;
};

using FilesBySize = std::map<std::int64_t, std::vector<File>>;
using Paths = std::vector<std::string>;

/// The folders that stage 1 does not enter. A Trash is one of them: otherwise the copy that is kept
/// could be the one that is deleted when the Trash is emptied.
class Outside {
public:
    [[nodiscard]] bool contains(int folder, const char* entry) const {
        const std::string_view name = entry;
        return name == "Library" || name == ".Trash" || name.starts_with(".Trash-") ||
               name.ends_with(".photoslibrary") || name.ends_with(".app") ||
               (name == Path::name(trash_) && isTrash(folder, entry));
    }

private:
    [[nodiscard]] bool isTrash(int folder, const char* entry) const {
        const auto status = Platform::entryStatus(folder, entry);
        return status && identity_ == status->identity;
    }

    std::string trash_ = Platform::homeTrash();
    std::optional<Platform::FileIdentity> identity_ = Platform::FileIdentity::of(trash_);
};

/// Stage 1; nullopt when it was cancelled.
std::optional<FilesBySize> filesBySize(
    const std::vector<std::string>& roots, std::int64_t minSize, ScanControl* control) {
    struct Folder {
        std::string path;
        FolderPlace place;
    };
    std::vector<Folder> waiting;
    for (const std::string& root : roots) {
        if (Path::isUsable(root)) {
            std::string path = Path::standardized(root);
            waiting.push_back({path, FolderPlace{path}});
        }
    }
    const Outside outside;
    FilesBySize files;
    while (!waiting.empty()) {
        if (control != nullptr && control->isCancelled()) {
            return std::nullopt;
        }
        const Folder folder = std::move(waiting.back());
        waiting.pop_back();
        const FolderPlace::Open open = folder.place.open();
        if (!open) {
            if (const int code = errno; control != nullptr) {
                control->couldNotOpen(folder.path, code);
            }
            continue;
        }
        const FolderPlace::Inside inside = folder.place.inside(open);
        const auto visit = [&](const Platform::DirectoryEntry& entry) {
            if (entry.isDirectory) {
                if (!outside.contains(open->number(), entry.name)) {
                    waiting.push_back(
                        {Path::join(folder.path, entry.name), inside.place(entry.name)});
                }
                return;
            }
            const auto status = Platform::entryStatus(open->number(), entry.name);
            if (status && status->kind == Platform::EntryStatus::Kind::file &&
                status->length >= minSize) {
                files[status->length].push_back(
                    {Path::join(folder.path, entry.name), status->identity});
            }
        };
        Platform::readDirectory(open->number(), Platform::EntryDetail::kind, visit);
    }
    return files;
}

/// Stage 2: one path for each file, and one for files that are clones of each other: the first met.
/// Clones are on one volume; equal extents on different volumes are a coincidence.
Paths firstNames(std::vector<File>& files, const FileReader& reader) {
    std::unordered_set<Platform::FileIdentity> seen;
    std::set<std::pair<std::uint64_t, std::vector<Platform::Extent>>> seenExtents;
    Paths paths;
    for (File& file : files) {
        if (reader.isCancelled() || !seen.insert(file.identity).second) {
            continue;
        }
        const auto extents = Platform::sharedExtents(FileReader::open(file.path).number());
        if (!extents || seenExtents.emplace(file.identity.device, *extents).second) {
            paths.push_back(std::move(file.path));
        }
    }
    return paths;
}

/// The paths grouped by their digest, in order, without those that have no digest or a unique one.
std::map<Sha256::Digest, Paths> grouped(const Paths& paths, const auto& digestOf) {
    std::map<Sha256::Digest, Paths> groups;
    for (const std::string& path : paths) {
        if (const std::optional<Sha256::Digest> digest = digestOf(path)) {
            groups[*digest].push_back(path);
        }
    }
    std::erase_if(groups, [](const auto& group) { return group.second.size() < 2; });
    return groups;
}

/// Stages 3 and 4: adds the groups of equal files among those of this length.
void addGroups(
    const Paths& sameSize,
    std::int64_t size,
    FileReader& reader,
    const Progress& progress,
    std::vector<DuplicateGroup>& result) {
    using Digest = std::optional<Sha256::Digest>;
    const auto alike = grouped(sameSize, [&](const std::string& path) {
        return reader.isCancelled() ? Digest{} : reader.digestOfEdges(path);
    });
    for (const auto& group : alike) {
        const auto digestOf = [&](const std::string& path) -> Digest {
            if (reader.isCancelled()) {
                return std::nullopt;
            }
            if (progress) {
                progress(path);
            }
            // Stage 3 has read short files completely.
            return size < FileReader::kEdgeBytes ? group.first : reader.digest(path, size);
        };
        for (auto& [digest, equal] : grouped(group.second, digestOf)) {
            result.push_back({.size = size, .paths = equal});
            std::ranges::sort(result.back().paths);
        }
    }
}

bool comesFirst(const DuplicateGroup& a, const DuplicateGroup& b) {
    return a.wastedBytes() != b.wastedBytes() ? a.wastedBytes() > b.wastedBytes()
                                              : a.paths.front() < b.paths.front();
}

}  // namespace

std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control,
    const Progress& progress) {
    auto files = filesBySize(roots, minSize, control);
    if (!files) {
        return {};
    }
    std::vector<DuplicateGroup> result;
    FileReader reader{control};
    for (auto& [size, sameSize] : *files) {
        if (sameSize.size() > 1) {
            addGroups(firstNames(sameSize, reader), size, reader, progress, result);
        }
    }
    if (reader.isCancelled()) {
        return {};
    }
    std::ranges::sort(result, comesFirst);
    return result;
}

}  // namespace DuplicateFinder

}  // namespace Brimlo
