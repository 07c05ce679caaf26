#include "BrimloCore/Cleaner/EqualFolders.h"

#include "BrimloCore/Cleaner/FileReader.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <tuple>
#include <unordered_map>
#include <utility>

// Folders are read from the deepest up. Each gets the number of its outline: the names in it with
// the group of each longer file, the length of each short one, the target of each symlink and the
// outline of each folder. Of folders with the same outline only the short files are still to be
// compared, the largest folders first, because what lies in equal folders is equal.

namespace Brimlo {

namespace {

using Platform::EntryStatus;
using Outline = std::size_t;

struct Contents {
    Outline outline = 0;
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::vector<std::string> shortFiles;  ///< Names.
    std::vector<std::string> folders;     ///< Names.
};

/// What is in the folders that hold equal files. Nothing is known of a folder that can equal none.
class Outlines {
public:
    Outlines(
        const std::vector<DuplicateGroup>& groups,
        const std::vector<std::string>& roots,
        std::int64_t minSize,
        const ScanControl* control)
        : minSize_{minSize}
        , control_{control} {
        std::ranges::transform(roots, std::inserter(roots_, roots_.end()), Path::standardized);
        for (std::size_t group = 0; group < groups.size(); ++group) {
            for (const DuplicateGroup::Copy& copy : groups[group].copies) {
                groupOf_.try_emplace(copy.path, group, groups[group].size);
                add(std::string{Path::parent(copy.path)});
            }
        }
        while (!waiting_.empty() && !isCancelled()) {
            look(waiting_.extract(std::prev(waiting_.end())).value().second);
        }
    }

    [[nodiscard]] const Contents* of(const std::string& folder) const {
        const auto found = known_.find(folder);
        return found == known_.end() || !found->second ? nullptr : &*found->second;
    }

    /// The folders of each outline that several have.
    [[nodiscard]] std::vector<std::vector<std::string>> alike() const {
        std::map<Outline, std::vector<std::string>> byOutline;
        for (const auto& [path, contents] : known_) {
            if (contents && contents->files > 1) {
                byOutline[contents->outline].push_back(path);
            }
        }
        std::vector<std::vector<std::string>> result;
        for (auto& [outline, folders] : byOutline) {
            if (folders.size() > 1) {
                std::ranges::sort(folders);
                result.push_back(std::move(folders));
            }
        }
        return result;
    }

    [[nodiscard]] bool isCancelled() const {
        return control_ != nullptr && control_->isCancelled();
    }

private:
    void add(std::string folder) {
        if (!known_.contains(folder)) {
            const auto depth = std::ranges::count(folder, '/');
            waiting_.emplace(depth, std::move(folder));
        }
    }

    /// Reads a folder, again once those in it are known, and then the one that it is in.
    void look(const std::string& path) {
        const FolderPlace place{path};
        const FolderPlace::Open open = place.open();
        std::map<std::string, bool> names;  // Whether it is a folder.
        const auto note = [&](const Platform::DirectoryEntry& entry) {
            names.emplace(entry.name, entry.isDirectory);
        };
        const bool isRead =
            open && Platform::readDirectory(open->number(), Platform::EntryDetail::kind, note);
        std::optional<Contents> contents =
            isRead ? std::optional<Contents>{Contents{}} : std::nullopt;
        std::string outline;
        std::vector<std::string> unknown;
        for (const auto& [name, isFolder] : names) {
            std::string inside = Path::join(path, name);
            if (isFolder && !known_.contains(inside)) {
                unknown.push_back(std::move(inside));
                continue;
            }
            const auto part =
                contents ? partOf(inside, open->number(), name, *contents) : std::nullopt;
            if (!part) {
                contents.reset();
                break;
            }
            outline.append(name).append(1, '\0').append(*part).append(1, '\0');
        }
        if (contents && !unknown.empty()) {
            std::ranges::for_each(unknown, [&](std::string& each) { add(std::move(each)); });
            add(path);
            return;
        }
        if (contents) {
            contents->outline =
                outlines_.try_emplace(std::move(outline), outlines_.size()).first->second;
        }
        const bool goesUp = contents && contents->files > 0 && !roots_.contains(path);
        known_.insert_or_assign(path, std::move(contents));
        if (goesUp) {
            add(std::string{Path::parent(path)});
        }
    }

    /// What an outline says of an entry, which is added to the contents.
    [[nodiscard]] std::optional<std::string> partOf(
        const std::string& path, int folder, const std::string& name, Contents& contents) const {
        const auto status = Platform::entryStatus(folder, name.c_str());
        if (!status) {
            return std::nullopt;
        }
        if (status->kind == EntryStatus::Kind::directory) {
            const Contents* const inside = of(path);
            if (inside == nullptr) {
                return std::nullopt;
            }
            contents.folders.push_back(name);
            contents.bytes = Bytes::sum(contents.bytes, inside->bytes);
            contents.files += inside->files;
            return "d" + std::to_string(inside->outline);
        }
        if (status->kind == EntryStatus::Kind::other) {
            std::error_code error;
            const auto target = std::filesystem::read_symlink(path, error);
            return error ? std::nullopt : std::optional{"l" + target.string()};
        }
        ++contents.files;
        contents.bytes = Bytes::sum(contents.bytes, status->length);
        const auto group = groupOf_.find(path);
        if (group != groupOf_.end() && group->second.second == status->length) {
            return "g" + std::to_string(group->second.first);
        }
        if (status->length >= minSize_ && status->length > 0) {
            return std::nullopt;
        }
        contents.shortFiles.push_back(name);
        return "s" + std::to_string(status->length);
    }

    std::int64_t minSize_;
    const ScanControl* control_;
    std::set<std::string> roots_;
    std::unordered_map<std::string, std::pair<std::size_t, std::int64_t>>
        groupOf_;                                               ///< And its length.
    std::set<std::pair<std::ptrdiff_t, std::string>> waiting_;  ///< By depth.
    std::unordered_map<std::string, std::optional<Contents>> known_;
    std::unordered_map<std::string, Outline> outlines_;
};

/// Compares the short files of folders with the same outline.
class ShortFiles {
public:
    ShortFiles(const Outlines& outlines, const ScanControl* control)
        : outlines_{outlines}
        , readers_{FileReader{control}, FileReader{control}} {}

    [[nodiscard]] bool areEqual(const std::string& one, const std::string& other) {
        std::vector<std::pair<std::string, std::string>> waiting{
            {one, other}
        };
        while (!waiting.empty()) {
            const auto [first, second] = std::move(waiting.back());
            waiting.pop_back();
            const Contents& contents = *outlines_.of(first);
            const auto isEqual = [&](const std::string& name) {
                const auto goesOn = [&] { return !outlines_.isCancelled(); };
                return FileReader::holdTheSame(
                    readers_,
                    FileReader::open(Path::join(first, name)),
                    FileReader::open(Path::join(second, name)),
                    goesOn);
            };
            if (!std::ranges::all_of(contents.shortFiles, isEqual)) {
                return false;
            }
            for (const std::string& name : contents.folders) {
                waiting.emplace_back(Path::join(first, name), Path::join(second, name));
            }
        }
        return true;
    }

private:
    const Outlines& outlines_;
    std::array<FileReader, 2> readers_;
};

/// Whether a folder or one above it is among these.
bool isTold(std::string_view folder, const std::set<std::string, std::less<>>& told) {
    while (folder != "/" && !told.contains(folder)) {
        folder = Path::parent(folder);
    }
    return folder != "/";
}

}  // namespace

std::vector<EqualFolders> EqualFolders::among(
    const std::vector<DuplicateGroup>& groups,
    const std::vector<std::string>& roots,
    std::int64_t minSize,
    ScanControl* control) {
    const Outlines outlines{groups, roots, minSize, control};
    auto alike = outlines.alike();
    const auto size = [&](const std::vector<std::string>& folders) {
        const Contents& contents = *outlines.of(folders.front());
        return std::tuple{-contents.bytes, -contents.files, folders.front()};
    };
    std::ranges::sort(alike, {}, size);
    ShortFiles shortFiles{outlines, control};
    std::set<std::string, std::less<>>
        told;  // Those of equal folders that another one of them stands for.
    std::vector<EqualFolders> result;
    for (const std::vector<std::string>& folders : alike) {
        std::vector<std::vector<std::string>> sets;
        for (const std::string& folder : folders) {
            if (outlines.isCancelled() || isTold(folder, told)) {
                continue;
            }
            const auto equal = std::ranges::find_if(
                sets, [&](const auto& set) { return shortFiles.areEqual(set.front(), folder); });
            (equal == sets.end() ? sets.emplace_back() : *equal).push_back(folder);
        }
        for (std::vector<std::string>& set : sets) {
            if (set.size() > 1) {
                told.insert(std::next(set.begin()), set.end());
                const Contents& contents = *outlines.of(set.front());
                result.push_back(
                    {.bytes = contents.bytes, .files = contents.files, .folders = std::move(set)});
            }
        }
    }
    return result;
}

}  // namespace Brimlo
