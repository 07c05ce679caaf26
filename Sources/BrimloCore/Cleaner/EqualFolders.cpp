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
// compared, the largest folders first, because what lies in equal folders is equal. Whether a
// folder with more in it holds all of another is asked where the other's rarest file has a copy.

namespace Brimlo {

namespace {

using Platform::EntryStatus;
using Outline = std::size_t;

struct Entry {
    enum class Kind { longFile, shortFile, link, folder };

    Kind kind;
    std::string name;
};

/// The group that a file was found in, and its length then.
struct InGroup {
    std::size_t group = 0;
    std::int64_t length = 0;
};

struct Contents {
    Outline outline = 0;
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::vector<Entry> entries;
    std::string rarest;  ///< The longer file, however deep, with the fewest copies; may be empty.
    std::size_t copies = 0;  ///< Of that file.
};

/// nullopt for anything but a symlink.
std::optional<std::string> targetOf(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(path, error);
    return error ? std::nullopt : std::optional{target.string()};
}

std::filesystem::file_status linkStatus(const std::string& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error);
}

/// What is in the folders that hold equal files. Nothing is known of a folder that can equal none.
class Outlines {
public:
    Outlines(
        const std::vector<DuplicateGroup>& groups,
        const std::vector<std::string>& roots,
        std::int64_t minSize,
        const ScanControl* control)
        : groups_{groups}
        , minSize_{minSize}
        , control_{control} {
        std::ranges::transform(roots, std::inserter(roots_, roots_.end()), Path::standardized);
        for (std::size_t group = 0; group < groups.size(); ++group) {
            for (const DuplicateGroup::Copy& copy : groups[group].copies) {
                groupOf_.emplace(copy.path, InGroup{group, groups[group].size});
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

    /// The folders of each outline.
    [[nodiscard]] std::vector<std::vector<std::string>> alike() const {
        std::map<Outline, std::vector<std::string>> byOutline;
        for (const auto& [path, contents] : known_) {
            if (contents && contents->files > 1) {
                byOutline[contents->outline].push_back(path);
            }
        }
        std::vector<std::vector<std::string>> result;
        for (auto& [outline, folders] : byOutline) {
            std::ranges::sort(folders);
            result.push_back(std::move(folders));
        }
        return result;
    }

    /// The folders, neither in this one nor around it, that may hold all that it holds: where its
    /// rarest file has copies at the same place.
    [[nodiscard]] std::vector<std::string> largerThan(const std::string& folder) const {
        std::vector<std::string> result;
        const Contents& contents = *of(folder);
        if (contents.rarest.empty() || contents.copies > kMostCopies) {
            return result;
        }
        const std::string end = "/" + contents.rarest;
        const auto& group = groups_[groupOf_.at(folder + end).group];
        for (const DuplicateGroup::Copy& copy : group.copies) {
            if (!copy.path.ends_with(end)) {
                continue;
            }
            const std::string other = copy.path.substr(0, copy.path.size() - end.size());
            const bool isApart = !Path::below(folder, other) && !Path::below(other, folder);
            if (isApart && hold(other, folder)) {
                result.push_back(other);
            }
        }
        return result;
    }

    [[nodiscard]] bool isCancelled() const {
        return control_ != nullptr && control_->isCancelled();
    }

private:
    // A file with more copies says little about where else its folder may be.
    static constexpr std::size_t kMostCopies = 64;

    /// Whether all of a folder but its short files lies in another at the same places.
    [[nodiscard]] bool hold(const std::string& other, const std::string& folder) const {
        return std::ranges::all_of(of(folder)->entries, [&](const Entry& entry) {
            const std::string path = Path::join(folder, entry.name);
            const std::string there = Path::join(other, entry.name);
            switch (entry.kind) {
                case Entry::Kind::longFile: {
                    const auto copy = groupOf_.find(there);
                    return copy != groupOf_.end() && copy->second.group == groupOf_.at(path).group;
                }
                case Entry::Kind::link:
                    return targetOf(there) == targetOf(path);
                case Entry::Kind::folder:
                    return std::filesystem::is_directory(linkStatus(there)) && hold(there, path);
                case Entry::Kind::shortFile:
                    break;
            }
            return true;
        });
    }

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
            contents.entries.push_back({Entry::Kind::folder, name});
            if (!inside->rarest.empty()) {
                keepRarest(contents, Path::join(name, inside->rarest), inside->copies);
            }
            contents.bytes = Bytes::sum(contents.bytes, inside->bytes);
            contents.files += inside->files;
            return "d" + std::to_string(inside->outline);
        }
        if (status->kind == EntryStatus::Kind::other) {
            const auto target = targetOf(path);
            contents.entries.push_back({Entry::Kind::link, name});
            return target ? std::optional{"l" + *target} : std::nullopt;
        }
        ++contents.files;
        contents.bytes = Bytes::sum(contents.bytes, status->length);
        const auto group = groupOf_.find(path);
        if (group != groupOf_.end() && group->second.length == status->length) {
            contents.entries.push_back({Entry::Kind::longFile, name});
            keepRarest(contents, name, groups_[group->second.group].copies.size());
            return "g" + std::to_string(group->second.group);
        }
        if (status->length >= minSize_ && status->length > 0) {
            return std::nullopt;
        }
        contents.entries.push_back({Entry::Kind::shortFile, name});
        return "s" + std::to_string(status->length);
    }

    static void keepRarest(Contents& contents, std::string file, std::size_t copies) {
        if (contents.rarest.empty() || copies < contents.copies) {
            contents.rarest = std::move(file);
            contents.copies = copies;
        }
    }

    const std::vector<DuplicateGroup>& groups_;
    std::int64_t minSize_;
    const ScanControl* control_;
    std::set<std::string> roots_;
    std::unordered_map<std::string, InGroup> groupOf_;
    std::set<std::pair<std::ptrdiff_t, std::string>> waiting_;  ///< By depth.
    std::unordered_map<std::string, std::optional<Contents>> known_;
    std::unordered_map<std::string, Outline> outlines_;
};

/// Compares the short files of folders that hold the same otherwise.
class ShortFiles {
public:
    ShortFiles(const Outlines& outlines, const ScanControl* control)
        : outlines_{outlines}
        , readers_{FileReader{control}, FileReader{control}} {}

    /// Whether those in a folder, however deep, equal those at the same places in another.
    [[nodiscard]] bool areEqual(const std::string& folder, const std::string& other) {
        std::vector<std::pair<std::string, std::string>> waiting{
            {folder, other}
        };
        while (!waiting.empty()) {
            const auto [first, second] = std::move(waiting.back());
            waiting.pop_back();
            const Contents& contents = *outlines_.of(first);
            for (const auto& [kind, name] : contents.entries) {
                const std::string mine = Path::join(first, name);
                const std::string theirs = Path::join(second, name);
                if (kind == Entry::Kind::folder) {
                    waiting.emplace_back(mine, theirs);
                } else if (kind == Entry::Kind::shortFile && !holdTheSame(mine, theirs)) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    [[nodiscard]] bool holdTheSame(const std::string& one, const std::string& other) {
        return FileReader::holdTheSame(
            readers_, FileReader::open(one), FileReader::open(other), [&] {
                return !outlines_.isCancelled();
            });
    }

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
    std::set<std::string, std::less<>> told;  // Others stand for what is in these.
    std::vector<EqualFolders> result;
    for (const std::vector<std::string>& folders : alike) {
        std::vector<EqualFolders> sets;
        for (const std::string& folder : folders) {
            if (outlines.isCancelled() || isTold(folder, told)) {
                continue;
            }
            const auto equal = std::ranges::find_if(sets, [&](const EqualFolders& set) {
                return shortFiles.areEqual(set.folders.front(), folder);
            });
            (equal == sets.end() ? sets.emplace_back() : *equal).folders.push_back(folder);
        }
        for (EqualFolders& set : sets) {
            const std::string& first = set.folders.front();
            std::ranges::copy_if(
                outlines.largerThan(first),
                std::back_inserter(set.larger),
                [&](const std::string& other) {
                    return !isTold(other, told) &&
                           !std::ranges::binary_search(set.folders, other) &&
                           shortFiles.areEqual(first, other);
                });
            if (set.folders.size() > 1 || !set.larger.empty()) {
                told.insert(set.folders.begin() + (set.larger.empty() ? 1 : 0), set.folders.end());
                set.bytes = outlines.of(first)->bytes;
                set.files = outlines.of(first)->files;
                result.push_back(std::move(set));
            }
        }
    }
    return result;
}

}  // namespace Brimlo
