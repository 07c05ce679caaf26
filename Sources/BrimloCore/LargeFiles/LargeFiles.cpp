#include "BrimloCore/LargeFiles/LargeFiles.h"

#include "BrimloCore/DiskScanner/FileTree.h"
#include "BrimloCore/DiskScanner/FolderPlace.h"
#include "BrimloCore/DiskScanner/WorkCrew.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <iterator>
#include <map>
#include <mutex>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Brimlo::LargeFiles {

namespace {

using Platform::EntryStatus;
using Files = std::vector<std::shared_ptr<FileNode>>;

/// The largest files so far, in an order that doesn't depend on when each is met. Any thread.
class TopList {
public:
    TopList(std::size_t limit, const FileFilter& filter)
        : limit_{limit}
        , filter_{filter}
        , threshold_{filter.minSize} {}

    /// Whether a file may enter the list. One of less than the threshold can't any more.
    [[nodiscard]] bool takes(std::string_view name, const EntryStatus& status) const {
        return status.allocatedBytes >= threshold() &&
               filter_.takes(name, status.allocatedBytes, status.modified);
    }

    /// Adds a file that `takes` let through if it belongs to the largest. Another name of a file
    /// that is listed takes its place if it comes first in the order of paths.
    void consider(std::string path, const EntryStatus& status) {
        const std::lock_guard guard{lock_};
        if (status.linkCount > 1) {
            if (const auto known = linked_.find(status.identity); known != linked_.end()) {
                if (known->second->first.path <= path) {
                    return;
                }
                files_.erase(known->second);
                linked_.erase(known);
            }
        }
        const auto [file, isNew] =
            files_.try_emplace(Key{.size = status.allocatedBytes, .path = std::move(path)}, status);
        if (isNew && status.linkCount > 1) {
            linked_.emplace(status.identity, file);
        }
        if (files_.size() > limit_) {
            const auto last = std::prev(files_.end());
            linked_.erase(last->second.identity);
            files_.erase(last);
        }
        if (files_.size() == limit_) {
            threshold_ = std::max(threshold(), std::prev(files_.end())->first.size);
        }
    }

    /// The files, the largest first. Call it when no thread considers any.
    [[nodiscard]] Files largestFirst() const {
        const auto tree = std::make_shared<FileTree>();
        Files nodes;
        nodes.reserve(files_.size());
        for (const auto& [key, status] : files_) {
            FileNode& node = tree->add(
                {.name = key.path, .size = key.size, .fileCount = 1, .modified = status.modified});
            nodes.push_back(node.shared());
        }
        return nodes;
    }

private:
    /// Where a file stands in the list.
    struct Key {
        std::int64_t size = 0;
        std::string path;

        bool operator<(const Key& other) const {
            return std::tie(other.size, path) < std::tie(size, other.path);
        }
    };
    using Sorted = std::map<Key, EntryStatus>;

    [[nodiscard]] std::int64_t threshold() const {
        return threshold_.load(std::memory_order_relaxed);
    }

    const std::size_t limit_;
    const FileFilter& filter_;
    std::atomic<std::int64_t> threshold_;  ///< Only rises.
    std::mutex lock_;
    Sorted files_;                                                         // guarded by lock_
    std::unordered_map<Platform::FileIdentity, Sorted::iterator> linked_;  // guarded by lock_
};

/// A folder whose subfolders wait to be entered. It lives until the last of them is.
struct Folder {
    std::string path;
    FolderPlace::Inside inside;
    std::vector<std::string> subfolders;
};

/// One job reads one folder.
class Walk {
public:
    Walk(TopList& top, ScanControl& control)
        : top_{top}
        , control_{control} {}

    /// False when `root` can't be read.
    [[nodiscard]] bool run(const std::string& root) {
        const FolderPlace place{root};
        const FolderPlace::Open open = place.open();
        if (!open) {
            return couldNotOpen(root);
        }
        // The device of the opened folder: a symlink to it may be on another volume.
        const auto status = Platform::entryStatus(open->number(), ".");
        device_ = status ? status->identity.device : 0;
        Crew::run(
            {},
            [&](const Job& job, Crew::Member& member) {
                if (control_.isCancelled()) {
                    return;
                }
                if (job.parent == nullptr) {
                    read(root, place, open, member);
                } else {
                    enter(*job.parent, job.index, member);
                }
            },
            FolderPlace::mostWalkers());
        return true;
    }

private:
    struct Job {
        std::shared_ptr<const Folder> parent;  ///< Null for the root.
        std::size_t index = 0;                 ///< Of the folder among the parent's subfolders.
    };
    using Crew = WorkCrew<Job>;

    bool couldNotOpen(const std::string& path) {
        if (const int code = errno; !control_.isCancelled()) {
            control_.couldNotOpen(path, code);
        }
        return false;
    }

    void enter(const Folder& parent, std::size_t index, Crew::Member& member) {
        const std::string& name = parent.subfolders[index];
        std::string path = Path::join(parent.path, name);
        const FolderPlace place = parent.inside.place(name);
        if (const FolderPlace::Open open = place.open()) {
            read(std::move(path), place, open, member);
        } else {
            couldNotOpen(path);
        }
    }

    void read(
        std::string path,
        const FolderPlace& place,
        const FolderPlace::Open& open,
        Crew::Member& member) {
        std::vector<std::string> subfolders;
        std::int64_t files = 0;
        std::int64_t bytes = 0;
        Platform::readDirectory(
            open->number(),
            Platform::EntryDetail::kind,
            [&](const Platform::DirectoryEntry& entry) {
                if (control_.isCancelled()) {
                    return;
                }
                const auto status = Platform::entryStatus(open->number(), entry.name);
                if (!status) {
                    return;
                }
                if (status->kind == EntryStatus::Kind::file) {
                    ++files;
                    bytes = Bytes::sum(bytes, status->allocatedBytes);
                    if (top_.takes(entry.name, *status)) {
                        top_.consider(Path::join(path, entry.name), *status);
                    }
                } else if (status->kind == EntryStatus::Kind::directory) {
                    if (status->identity.device == device_) {
                        subfolders.emplace_back(entry.name);
                    } else {
                        control_.leaveOut(Path::join(path, entry.name));
                    }
                }
            });
        control_.record(files, bytes, [&] { return path; });
        if (subfolders.empty()) {
            return;
        }
        const auto folder = std::make_shared<const Folder>(Folder{
            .path = std::move(path),
            .inside = place.inside(open),
            .subfolders = std::move(subfolders)});
        std::vector<Job> jobs;
        jobs.reserve(folder->subfolders.size());
        for (std::size_t i = folder->subfolders.size(); i-- > 0;) {
            jobs.push_back({.parent = folder, .index = i});
        }
        member.keep(jobs);
    }

    std::uint64_t device_ = 0;  ///< Of the root.
    TopList& top_;
    ScanControl& control_;
};

}  // namespace

std::optional<Files> find(
    const std::string& root, std::size_t limit, const FileFilter& filter, ScanControl& control) {
    assert(limit > 0);
    TopList top{limit, filter};
    if (!Path::isUsable(root) || !Walk{top, control}.run(Path::standardized(root))) {
        return std::nullopt;
    }
    return top.largestFirst();
}

}  // namespace Brimlo::LargeFiles
