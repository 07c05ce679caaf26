#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Platform/CloneFile.h"
#include "BrimloCore/Platform/DirectoryReader.h"
#include "BrimloCore/Platform/EntryStatus.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Sha256.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Four stages, each on what the one before it left: files by length, without further names of a
// file already met, by a digest of beginning and end, and by a digest of all bytes. So that of
// most files nothing is read, and of most others 128 KiB.

namespace Brimlo {

std::int64_t DuplicateGroup::wastedBytes() const {
    return paths.empty() ? 0 : size * (std::ssize(paths) - 1);
}

namespace DuplicateFinder {

namespace {

constexpr std::int64_t kEdgeBytes = 65'536;
constexpr std::int64_t kLongestWithOneEdge = 2 * kEdgeBytes;
constexpr std::int64_t kChunkBytes = 4'194'304;

struct File {
    std::string path;
    std::uint64_t fileID = 0;
    std::uint64_t device = 0;
};

using FilesBySize = std::map<std::int64_t, std::vector<File>>;
using Paths = std::vector<std::string>;

/// Tells which folders stage 1 keeps out of. Those of a Trash: were its items found, the copy that
/// is kept could be the one that the next emptying deletes.
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
        return status && identity_ == Platform::FileIdentity{status->device, status->fileID};
    }

    std::string trash_ = Platform::homeTrash();
    std::optional<Platform::FileIdentity> identity_ = Platform::FileIdentity::of(trash_);
};

/// Stage 1; nullopt when it was cancelled.
std::optional<FilesBySize> filesBySize(
    const std::vector<std::string>& roots, std::int64_t minSize, const ScanControl* control) {
    struct Folder {
        std::string path;
        FolderPlace place;
    };
    std::vector<Folder> waiting;
    for (const std::string& root : roots) {
        if (Path::isUsable(root)) {
            waiting.push_back({root, FolderPlace{root}});
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
            continue;
        }
        const FolderPlace::Inside inside = folder.place.inside(open);
        const auto visit = [&](const Platform::DirectoryEntry& entry) {
            if (entry.isDirectory) {
                if (!outside.contains(open->number(), entry.name)) {
                    waiting.push_back({folder.path + "/" + entry.name, inside.place(entry.name)});
                }
                return;
            }
            const auto status = Platform::entryStatus(open->number(), entry.name);
            if (status && status->kind == Platform::EntryStatus::Kind::file &&
                status->length >= minSize) {
                files[status->length].push_back(
                    {folder.path + "/" + entry.name, status->fileID, status->device});
            }
        };
        Platform::readDirectory(open->number(), Platform::EntryDetail::kind, visit);
    }
    return files;
}

/// Stage 2: the paths, of each file that under which it was met first.
Paths firstNames(std::vector<File>& files) {
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen;
    Paths paths;
    for (File& file : files) {
        if (seen.emplace(file.device, file.fileID).second) {
            paths.push_back(std::move(file.path));
        }
    }
    return paths;
}

/// Reads files and digests them, with one buffer for all.
class FileReader {
public:
    using Bytes = std::span<const std::byte>;

    /// Opens a regular file alone: a pipe or device may have taken its place since it was met.
    static Platform::Descriptor open(const std::string& path) {
        constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
        Platform::Descriptor file{::open(path.c_str(), kFlags)};
        struct stat status {};
        const bool isFile = file && fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
        return isFile ? std::move(file) : Platform::Descriptor{};
    }

    /// Up to `count` bytes, fewer only at the end; nullopt when reading failed. Valid until the
    /// next call.
    std::optional<Bytes> read(
        const Platform::Descriptor& file, std::int64_t count, std::int64_t offset) {
        std::int64_t length = 0;
        while (length < count) {
            const ssize_t more = pread(
                file.number(),
                buffer_->bytes.data() + length,
                static_cast<std::size_t>(count - length),
                offset + length);
            if (more == 0) {
                break;
            }
            if (more < 0 && errno != EINTR) {
                return std::nullopt;
            }
            length += std::max<ssize_t>(more, 0);
        }
        return Bytes{buffer_->bytes}.first(static_cast<std::size_t>(length));
    }

    /// The digest of the beginning, and of the end where the two do not meet; nullopt when nothing
    /// can be read.
    std::optional<Sha256::Digest> digestOfEdges(const std::string& path) {
        const Platform::Descriptor file = open(path);
        const auto beginning = read(file, kEdgeBytes, 0);
        if (!beginning || beginning->empty()) {
            return std::nullopt;
        }
        sha256_.update(*beginning);
        struct stat status {};
        if (fstat(file.number(), &status) == 0 && status.st_size > kLongestWithOneEdge) {
            sha256_.update(read(file, kEdgeBytes, status.st_size - kEdgeBytes).value_or(Bytes{}));
        }
        return sha256_.finish();
    }

    /// The digest of all bytes up to where they can't be read any further; nullopt when the file
    /// can't be opened or is longer than `size` by now, since one that grows on might never end.
    std::optional<Sha256::Digest> digest(const std::string& path, std::int64_t size) {
        const Platform::Descriptor file = open(path);
        if (!file) {
            return std::nullopt;
        }
        std::int64_t offset = 0;
        while (offset <= size) {
            const auto bytes = read(file, kChunkBytes, offset);
            if (!bytes || bytes->empty()) {
                return sha256_.finish();
            }
            sha256_.update(*bytes);
            offset += std::ssize(*bytes);
        }
        static_cast<void>(sha256_.finish());
        return std::nullopt;
    }

private:
    /// 4 MiB where a page begins: the kernel copies to other places at a third of the speed.
    struct alignas(4096) Buffer {
        std::array<std::byte, kChunkBytes> bytes;
    };

    std::unique_ptr<Buffer> buffer_ = std::make_unique_for_overwrite<Buffer>();
    Sha256 sha256_;
};

/// The paths of which `digestOf` says the same, in their order; without those that nothing else
/// agrees with, or of which it says nothing.
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

/// Stages 3 and 4: adds the groups of equal files among those that seem to have this length.
void addGroups(
    const Paths& sameSize,
    std::int64_t size,
    FileReader& reader,
    const Progress& progress,
    std::vector<DuplicateGroup>& result) {
    const auto alike =
        grouped(sameSize, [&](const std::string& path) { return reader.digestOfEdges(path); });
    for (const auto& group : alike) {
        const auto digestOf = [&](const std::string& path) {
            if (progress) {
                progress(path);
            }
            // What is so short was read to its end already.
            return size < kEdgeBytes ? std::optional{group.first} : reader.digest(path, size);
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
    const ScanControl* control,
    const Progress& progress) {
    auto files = filesBySize(roots, minSize, control);
    if (!files) {
        return {};
    }
    std::vector<DuplicateGroup> result;
    FileReader reader;
    for (auto& [size, sameSize] : *files) {
        if (sameSize.size() > 1) {
            addGroups(firstNames(sameSize), size, reader, progress, result);
        }
    }
    std::ranges::sort(result, comesFirst);
    return result;
}

bool areEqual(const std::string& first, const std::string& second) {
    std::array<FileReader, 2> readers;
    const Platform::Descriptor one = FileReader::open(first);
    const Platform::Descriptor other = FileReader::open(second);
    for (std::int64_t offset = 0; one && other; offset += kChunkBytes) {
        const auto mine = readers[0].read(one, kChunkBytes, offset);
        const auto its = readers[1].read(other, kChunkBytes, offset);
        if (!mine || !its || !std::ranges::equal(*mine, *its)) {
            return false;
        }
        if (std::ssize(*mine) < kChunkBytes) {
            return true;
        }
    }
    return false;
}

std::expected<void, Error> replaceWithClone(
    const std::string& original, const std::string& duplicate) {
    const std::string temporary = duplicate + ".brimlo-clone";
    auto cloned = Platform::cloneFile(original, temporary);
    if (!cloned) {
        return cloned;
    }
    Platform::copyTimesAndMode(duplicate, temporary);
    if (rename(temporary.c_str(), duplicate.c_str()) == 0) {
        return {};
    }
    const int code = errno;
    unlink(temporary.c_str());
    return std::unexpected(
        Error{.domain = kSystemErrorDomain, .code = code, .description = "rename failed"});
}

}  // namespace DuplicateFinder

}  // namespace Brimlo
