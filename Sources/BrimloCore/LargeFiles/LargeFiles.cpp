#include "BrimloCore/LargeFiles/LargeFiles.h"

#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace Brimlo::LargeFiles {

namespace {

using Platform::EntryStatus;
using Files = std::vector<std::shared_ptr<FileNode>>;

/// The largest files so far.
class TopList {
public:
    TopList(std::size_t limit, std::int64_t minSize)
        : limit_{limit}
        , threshold_{minSize} {}

    /// The smallest size that can still enter the list; it only rises.
    [[nodiscard]] std::int64_t threshold() const { return threshold_; }

    /// Adds a file of at least the threshold, unless the list is full of files as large.
    void consider(const std::string& path, const EntryStatus& status) {
        if (nodes_.size() < limit_) {
            nodes_.insert(makeNode(path, status));
            if (nodes_.size() == limit_) {
                threshold_ = std::max(threshold_, (*nodes_.begin())->size);
            }
        } else if ((*nodes_.begin())->size < status.allocatedBytes) {
            nodes_.erase(nodes_.begin());
            FileNode* const node = makeNode(path, status);
            // It replaces the smallest, so it goes before its equals.
            nodes_.insert(nodes_.lower_bound(node), node);
            threshold_ = (*nodes_.begin())->size;
        }
    }

    /// The files, the largest first; equal ones in list order.
    [[nodiscard]] Files largestFirst() const {
        Files sorted;
        sorted.reserve(nodes_.size());
        for (FileNode* const node : nodes_) {
            sorted.push_back(node->shared());
        }
        std::ranges::stable_sort(
            sorted, std::ranges::greater{}, [](const auto& node) { return node->size; });
        return sorted;
    }

private:
    struct Smaller {
        bool operator()(const auto& a, const auto& b) const { return a->size < b->size; }
    };

    FileNode* makeNode(const std::string& path, const EntryStatus& status) {
        return &tree_->add(
            {.name = path,
             .size = status.allocatedBytes,
             .fileCount = 1,
             .modified = status.modified});
    }

    std::size_t limit_;
    std::int64_t threshold_;
    std::shared_ptr<FileTree> tree_ = std::make_shared<FileTree>();  ///< Holds the nodes.
    std::multiset<FileNode*, Smaller> nodes_;
};

/// An entry to visit once its folder is read: a subfolder, or a file that may be large.
struct Entry {
    std::string name;
    EntryStatus status;
};

/// A folder whose subfolders are being walked.
struct Level {
    std::size_t pathLength = 0;  ///< Of the folder's own path.
    std::vector<Entry> entries;  ///< In the folder's order, from the first subfolder on.
    std::size_t next = 0;
    std::size_t subfoldersLeft = 0;
    std::optional<FolderPlace::Inside> inside;  ///< Until the last subfolder is entered.
    std::int64_t files = 0;
    std::int64_t bytes = 0;
};

/// Depth first, each subfolder in the order of its folder's entries.
///
/// A folder is read completely before its first subfolder is entered, so that it need not stay
/// open. The result is the same as of a recursive walk, because whether a file enters the list is
/// decided in the order of entries.
class Walk {
public:
    Walk(TopList& top, ScanControl& control)
        : top_{top}
        , control_{control} {}

    /// False when `root` can't be read.
    [[nodiscard]] bool run(const std::string& root) {
        path_ = root;
        if (control_.isCancelled()) {
            return true;
        }
        enter(FolderPlace{root});
        const bool isRead = !levels_.empty();
        while (!levels_.empty() && !control_.isCancelled()) {
            Level& level = levels_.back();
            path_.resize(level.pathLength);
            if (level.next == level.entries.size()) {
                control_.record(level.files, level.bytes, [this] { return path_; });
                levels_.pop_back();
                continue;
            }
            const Entry entry = std::move(level.entries[level.next++]);
            if (entry.status.kind == EntryStatus::Kind::directory) {
                descend(level, entry.name);
            } else {
                consider(entry.name.c_str(), entry.status);
            }
        }
        return isRead;
    }

private:
    void descend(Level& level, const std::string& name) {
        const FolderPlace place = level.inside->place(name);
        if (--level.subfoldersLeft == 0) {
            level.inside.reset();
        }
        path_.append(path_ == "/" ? "" : "/").append(name);
        enter(place);
    }

    /// Opens and reads the folder at `path_`, and pushes it on the levels.
    void enter(const FolderPlace& place) {
        const FolderPlace::Open open = place.open();
        if (!open) {
            if (const int code = errno; !control_.isCancelled()) {
                control_.couldNotOpen(path_, code);
            }
            return;
        }
        if (levels_.empty()) {
            // The device of the opened folder: a symlink to it may be on another volume.
            const auto status = Platform::entryStatus(open->number(), ".");
            device_ = status ? status->identity.device : 0;
        }
        Level level{.pathLength = path_.size()};
        Platform::readDirectory(
            open->number(),
            Platform::EntryDetail::kind,
            [&](const Platform::DirectoryEntry& entry) {
                if (!control_.isCancelled()) {
                    lookAt(open->number(), entry.name, level);
                }
            });
        if (level.subfoldersLeft > 0) {
            level.inside = place.inside(open);
        }
        levels_.push_back(std::move(level));
    }

    void lookAt(int folder, const char* name, Level& level) {
        const auto status = Platform::entryStatus(folder, name);
        if (!status) {
            return;
        }
        if (status->kind == EntryStatus::Kind::directory) {
            if (status->identity.device != device_) {
                control_.leaveOut(Path::join(path_, name));
                return;
            }
            level.entries.push_back({name, *status});
            ++level.subfoldersLeft;
        } else if (status->kind == EntryStatus::Kind::file) {
            ++level.files;
            level.bytes = Bytes::sum(level.bytes, status->allocatedBytes);
            if (status->allocatedBytes < top_.threshold()) {
                return;
            }
            if (level.subfoldersLeft == 0) {
                consider(name, *status);
            } else {
                level.entries.push_back({name, *status});
            }
        }
    }

    /// Adds a file of the folder at `path_` if it is still large enough and met for the first time.
    void consider(const char* name, const EntryStatus& status) {
        // Files below the threshold need not be remembered: it only rises, and all names of a file
        // have one size.
        if (status.allocatedBytes >= top_.threshold() && linkedFiles_.isFirst(status)) {
            top_.consider(Path::join(path_, name), status);
        }
    }

    std::uint64_t device_ = 0;  ///< Of the root.
    TopList& top_;
    ScanControl& control_;
    LinkedFiles linkedFiles_;
    std::vector<Level> levels_;  ///< From the root down to the folder at work.
    std::string path_;           ///< Of the folder at work.
};

}  // namespace

std::optional<Files> find(
    const std::string& root, std::size_t limit, std::int64_t minSize, ScanControl& control) {
    assert(limit > 0);
    TopList top{limit, minSize};
    if (!Path::isUsable(root) || !Walk{top, control}.run(Path::standardized(root))) {
        return std::nullopt;
    }
    return top.largestFirst();
}

}  // namespace Brimlo::LargeFiles
