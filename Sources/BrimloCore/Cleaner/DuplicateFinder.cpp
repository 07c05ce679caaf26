#include "BrimloCore/Cleaner/DuplicateFinder.h"

#include "BrimloCore/Cleaner/FileReader.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/UnsureBlocks.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

// Four stages, each on the result of the one before: group files by length, drop further names of a
// file already met, group by a hash of beginning and end, compare all bytes. Most files are never
// read, and most others only 128 KiB of them.

namespace Brimlo {

std::int64_t DuplicateGroup::wastedBytes() const {
    return copies.empty() ? 0 : Bytes::product(size, std::ssize(copies) - 1);
}

std::vector<std::string> DuplicateGroup::paths() const {
    std::vector<std::string> paths;
    std::ranges::transform(copies, std::back_inserter(paths), &Copy::path);
    return paths;
}

namespace DuplicateFinder {

namespace {

struct File {
    std::string path;
    Platform::FileIdentity identity;
};

using FilesBySize = std::map<std::int64_t, std::vector<File>>;
using Paths = std::vector<std::string>;

/// A file that may have equals.
struct Candidate {
    std::string path;
    Platform::FileVersion version;  ///< When its beginning and end were read.
};

/// Files whose bytes are the same as far as they were compared.
using Class = std::vector<Candidate>;

bool isCancelled(const ScanControl* control) {
    return control != nullptr && control->isCancelled();
}

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
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control,
    LeftOut& leftOut) {
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
    std::unordered_set<Platform::FileIdentity> searched;  // Roots may lie in each other.
    while (!waiting.empty()) {
        if (isCancelled(control)) {
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
        const auto self =
            roots.size() > 1 ? Platform::entryStatus(open->number(), ".") : std::nullopt;
        if (self && !searched.insert(self->identity).second) {
            continue;
        }
        const FolderPlace::Inside inside = folder.place.inside(open);
        const auto visit = [&](const Platform::DirectoryEntry& entry) {
            if (entry.isDirectory) {
                if (outside.contains(open->number(), entry.name)) {
                    ++leftOut.folders;
                } else {
                    waiting.push_back(
                        {Path::join(folder.path, entry.name), inside.place(entry.name)});
                }
                return;
            }
            const auto status = Platform::entryStatus(open->number(), entry.name);
            if (!status || status->kind != Platform::EntryStatus::Kind::file) {
                return;
            }
            if (status->length >= minSize) {
                files[status->length].push_back(
                    {Path::join(folder.path, entry.name), status->identity});
            } else if (status->length > 0) {
                ++leftOut.shortFiles;
                leftOut.shortBytes = Bytes::sum(leftOut.shortBytes, status->length);
            }
        };
        Platform::readDirectory(open->number(), Platform::EntryDetail::kind, visit);
    }
    return files;
}

/// Stage 2, for the files of one length after the other.
class FirstNames {
public:
    /// One path for each file, and one for files that are clones of each other: the first met.
    [[nodiscard]] Paths of(std::vector<File>& files, const ScanControl* control);

private:
    /// The extents of a file, if they are a clone's. To ask for them takes as long as to read a
    /// short file, so it is done only where a file system knows clones.
    std::optional<std::vector<Platform::Extent>> extents(const File& file);

    std::map<std::uint64_t, bool> haveClones_;  ///< By device.
};

std::optional<std::vector<Platform::Extent>> FirstNames::extents(const File& file) {
    const auto [device, isNew] = haveClones_.try_emplace(file.identity.device);
    if (isNew) {
        device->second = Platform::blockSharing(file.path).isPossible;
    }
    return device->second ? Platform::sharedExtents(FileReader::open(file.path).number())
                          : std::nullopt;
}

Paths FirstNames::of(std::vector<File>& files, const ScanControl* control) {
    std::unordered_set<Platform::FileIdentity> seen;
    // Clones are on one volume; equal extents on different volumes are a coincidence.
    std::set<std::pair<std::uint64_t, std::vector<Platform::Extent>>> seenExtents;
    Paths paths;
    for (File& file : files) {
        if (isCancelled(control) || !seen.insert(file.identity).second) {
            continue;
        }
        const auto shared = extents(file);
        if (!shared || seenExtents.emplace(file.identity.device, *shared).second) {
            paths.push_back(std::move(file.path));
        }
    }
    return paths;
}

/// Stages 3 and 4, with the memory for parts of files.
class Comparison {
public:
    Comparison(const ScanControl* control, const std::function<void(const Progress&)>& progress)
        : control_{control}
        , progress_{progress} {}

    /// Stage 3: the classes of two or more files of this length whose beginning and end have the
    /// same hash.
    void addLikely(const Paths& sameSize, std::int64_t size);

    /// Stage 4: the groups of equal files; when cancelled, those that were finished.
    [[nodiscard]] std::vector<DuplicateGroup> groups();

private:
    /// Files of which the first `compared` bytes are the same.
    struct Work {
        Class files;
        std::int64_t size = 0;
        std::int64_t compared = 0;
    };

    static constexpr std::int64_t kEdgeBytes = 65'536;
    static constexpr std::int64_t kLongestPart = 1'048'576;
    static constexpr std::int64_t kShortestPart = 65'536;
    /// Read at a stretch, as a rotating disk wants it.
    static constexpr std::int64_t kAheadBytes = 4'194'304;
    /// For the parts that differ.
    static constexpr std::size_t kMemory = std::size_t{32} << 20U;

    struct alignas(FileReader::kAlignment) Memory {
        std::array<std::byte, kMemory + kLongestPart> bytes;
    };

    using Part = std::span<std::byte>;

    [[nodiscard]] std::optional<std::size_t> hashOfEdges(Candidate& file, std::int64_t size);
    [[nodiscard]] static std::int64_t partLength(const Work& work);
    [[nodiscard]] std::vector<Class> split(Work work, std::int64_t length);
    [[nodiscard]] bool read(const Candidate& file, const Work& work, Part part) const;
    void tell(const std::string& path) const;

    const ScanControl* control_;
    const std::function<void(const Progress&)>& progress_;
    std::unique_ptr<Memory> memory_ = std::make_unique_for_overwrite<Memory>();
    std::vector<Work> likely_;
    std::int64_t compared_ = 0;
    std::int64_t total_ = 0;
    std::chrono::steady_clock::time_point start_;  ///< Of stage 4.
};

/// The hash of the beginning and the end, all of a short file; sets the version. nullopt when the
/// file can't be read or has another length by now.
std::optional<std::size_t> Comparison::hashOfEdges(Candidate& file, std::int64_t size) {
    const Platform::Descriptor open = FileReader::open(file.path);
    const Part edges{memory_->bytes};
    const std::int64_t beginning = std::min(size, kEdgeBytes);
    const std::int64_t end = std::min(size - beginning, kEdgeBytes);
    const auto first = static_cast<std::size_t>(beginning);
    const auto last = static_cast<std::size_t>(end);
    if (!open || FileReader::fill(edges.first(first), open, 0) != first ||
        FileReader::fill(edges.subspan(first, last), open, size - end) != last) {
        return std::nullopt;
    }
    const auto version = Platform::FileVersion::of(open.number());
    if (!version || version->length != size) {
        return std::nullopt;
    }
    file.version = *version;
    const auto* const text = reinterpret_cast<const char*>(edges.data());
    return std::hash<std::string_view>{}({text, first + last});
}

void Comparison::addLikely(const Paths& sameSize, std::int64_t size) {
    std::map<std::size_t, Class> byHash;
    for (const std::string& path : sameSize) {
        if (isCancelled(control_)) {
            return;
        }
        Candidate file{.path = path, .version = {}};
        if (const auto hash = hashOfEdges(file, size)) {
            byHash[*hash].push_back(std::move(file));
        }
    }
    for (auto& [hash, files] : byHash) {
        if (files.size() > 1) {
            total_ = Bytes::sum(total_, Bytes::product(size, std::ssize(files)));
            likely_.push_back({.files = std::move(files), .size = size});
        }
    }
}

std::vector<DuplicateGroup> Comparison::groups() {
    start_ = std::chrono::steady_clock::now();
    std::vector<DuplicateGroup> result;
    while (!likely_.empty() && !isCancelled(control_)) {
        Work work = std::move(likely_.back());
        likely_.pop_back();
        if (work.compared == work.size) {
            result.push_back({.size = work.size, .copies = {}});
            auto& copies = result.back().copies;
            for (Candidate& file : work.files) {
                copies.push_back({.path = std::move(file.path), .written = file.version.written});
            }
            std::ranges::sort(copies, {}, &DuplicateGroup::Copy::path);
            continue;
        }
        const std::int64_t size = work.size;
        const std::int64_t length = partLength(work);
        const std::int64_t compared = work.compared + length;
        std::int64_t settled = std::ssize(work.files);
        for (Class& files : split(std::move(work), length)) {
            if (files.size() > 1) {
                settled -= std::ssize(files);
                likely_.push_back({.files = std::move(files), .size = size, .compared = compared});
            }
        }
        compared_ += settled * (size - compared);
    }
    return result;
}

/// Short when there are many files, so that the parts that differ have room in the memory.
std::int64_t Comparison::partLength(const Work& work) {
    const auto share = static_cast<std::int64_t>(kMemory / work.files.size());
    const std::int64_t whole = share / kShortestPart * kShortestPart;
    return std::min(std::clamp(whole, kShortestPart, kLongestPart), work.size - work.compared);
}

/// The classes by the next bytes, without files that can't be read.
std::vector<Class> Comparison::split(Work work, std::int64_t length) {
    const auto count = static_cast<std::size_t>(length);
    const std::size_t room = kMemory / count;
    const auto part = [&](std::size_t place) {
        return Part{memory_->bytes}.subspan(place * count, count);
    };
    std::vector<Class> classes;
    // The parts of the first so many classes are held, and the files that are in none of them wait
    // for the next turn.
    while (!work.files.empty()) {
        Class waiting;
        const std::size_t first = classes.size();
        for (Candidate& file : work.files) {
            if (isCancelled(control_)) {
                return {};
            }
            tell(file.path);
            const std::size_t held = classes.size() - first;
            if (!read(file, work, part(held))) {
                compared_ += length;
                continue;
            }
            std::size_t place = 0;
            while (place < held && !FileReader::areEqual(part(place), part(held))) {
                ++place;
            }
            if (place == held && held == room) {
                waiting.push_back(std::move(file));
                continue;
            }
            if (place == held) {
                classes.emplace_back();
            }
            classes[first + place].push_back(std::move(file));
            compared_ += length;
        }
        work.files = std::move(waiting);
    }
    return classes;
}

/// Fills `part` with the file's next bytes, if it is still the file that it was.
bool Comparison::read(const Candidate& file, const Work& work, Part part) const {
    const Platform::Descriptor open = FileReader::open(file.path);
    if (!open) {
        return false;
    }
    if (work.compared % kAheadBytes == 0) {
        Platform::readAhead(
            open.number(), work.compared, std::min(work.size - work.compared, kAheadBytes));
    }
    if (FileReader::fill(part, open, work.compared) != part.size()) {
        return false;
    }
    const auto version = Platform::FileVersion::of(open.number());
    return version && version->holdsTheBytesOf(file.version);
}

void Comparison::tell(const std::string& path) const {
    if (!progress_) {
        return;
    }
    Progress progress{.path = path, .compared = compared_, .total = total_, .left = {}};
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
    if (elapsed > std::chrono::seconds{1} && compared_ > 0) {
        const auto rest = static_cast<double>(total_ - compared_);
        progress.left = std::chrono::ceil<std::chrono::seconds>(
            elapsed * (rest / static_cast<double>(compared_)));
    }
    progress_(progress);
}

bool comesFirst(const DuplicateGroup& a, const DuplicateGroup& b) {
    return a.wastedBytes() != b.wastedBytes() ? a.wastedBytes() > b.wastedBytes()
                                              : a.copies.front().path < b.copies.front().path;
}

}  // namespace

std::string Progress::words() const {
    const std::string words = Fmt::bytes(compared) + " of " + Fmt::bytes(total);
    return left ? words + ", about " + std::to_string(left->count()) + " s left" : words;
}

std::string LeftOut::words() const {
    std::string words;
    if (shortFiles > 0) {
        words = std::to_string(shortFiles) + (shortFiles == 1 ? " file" : " files") +
                " shorter than " + Fmt::bytes(minSize) + " (" + Fmt::bytes(shortBytes) + " in all)";
    }
    if (folders > 0) {
        words += words.empty() ? "" : " and ";
        words += std::to_string(folders) + (folders == 1 ? " folder" : " folders") +
                 " of applications or of a Trash";
    }
    return words.empty() ? words : "Left out: " + words + ".";
}

std::vector<DuplicateGroup> find(
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control,
    const std::function<void(const Progress&)>& progress,
    LeftOut* leftOut) {
    LeftOut passedOver{.minSize = minSize};
    auto files = filesBySize(roots, minSize, control, passedOver);
    if (leftOut != nullptr) {
        *leftOut = passedOver;
    }
    if (!files) {
        return {};
    }
    FirstNames names;
    Comparison comparison{control, progress};
    for (auto& [size, sameSize] : *files) {
        if (sameSize.size() > 1 && size > 0) {
            comparison.addLikely(names.of(sameSize, control), size);
        }
    }
    std::vector<DuplicateGroup> result = comparison.groups();
    std::ranges::sort(result, comesFirst);
    return result;
}

}  // namespace DuplicateFinder

}  // namespace Brimlo
