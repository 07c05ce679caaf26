#include "BrimloCore/DiskScanner/TreeScan.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <ranges>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

using Nodes = std::vector<FileNode*>;

/// macOS mounts the system's volumes here a second time.
constexpr std::string_view kSyntheticMount = "/System/Volumes";

/// Entries whose status one job reads.
constexpr std::size_t kBatchSize = 1024;

/// The names in a folder, in its order, in one buffer.
class NameList {
public:
    void append(const char* name) {
        starts_.push_back(text_.size());
        text_.append(name).push_back('\0');
    }
    [[nodiscard]] std::size_t size() const { return starts_.size(); }
    [[nodiscard]] const char* operator[](std::size_t i) const { return text_.data() + starts_[i]; }

private:
    std::string text_;
    std::vector<std::size_t> starts_;
};

/// The totals of merged children.
struct Merged {
    std::int64_t count = 0;
    std::int64_t size = 0;
    std::int64_t fileCount = 0;
    std::chrono::sys_seconds modified = std::chrono::sys_seconds::min();

    void add(std::int64_t bytes, std::int64_t files, std::chrono::sys_seconds time) {
        ++count;
        size = Bytes::sum(size, bytes);
        fileCount += files;
        modified = std::max(modified, time);
    }
};

}  // namespace

/// The part of an entry's status that the tree needs.
struct TreeScan::Entry {
    const char* name = "";  ///< In its folder's list of names.
    std::int64_t bytes = 0;
    std::chrono::sys_seconds modified;
};

/// The entries that one job has read, in the folder's order.
struct TreeScan::Batch {
    std::vector<Entry> subfolders;
    std::vector<Entry> leaves;
};

/// A folder being scanned.
struct TreeScan::Folder {
    Folder(Folder* above, std::size_t slotAbove, FileNode& own, FolderPlace at)
        : parent{above}
        , slot{slotAbove}
        , depth{above == nullptr ? 0 : above->depth + 1}
        , node{own}
        , place{std::move(at)} {}

    Folder* const parent;
    const std::size_t slot;  ///< The place among the parent's subfolders.
    const std::int64_t depth;
    FileNode& node;                                        ///< Holds its own blocks alone.
    FolderPlace place;                                     ///< Until it is read.
    FolderPlace::Open open;                                ///< While it is read.
    std::optional<FolderPlace::Inside> placeOfSubfolders;  ///< Until the last of them is entered.

    NameList names;                         ///< Until the status of all is read.
    std::vector<Batch> batches;             ///< As long as the names.
    std::atomic<std::size_t> unlooked = 0;  ///< Batches.

    Nodes leaves;   ///< All entries but folders; in a crowded folder the large ones.
    Merged merged;  ///< The small ones of a crowded folder.
    Nodes subfolders;
    std::vector<std::unique_ptr<Folder>> entered;  ///< Those that are being scanned, by slot.
    std::atomic<std::size_t> unentered = 0;        ///< Subfolders.
    std::atomic<std::size_t> unfinished = 0;       ///< Subfolders.
};

TreeScan::TreeScan(ScanControl& control, const ScanOptions& options, LinkedFiles& linkedFiles)
    : control_{control}
    , options_{options}
    , linkedFiles_{linkedFiles} {}

std::shared_ptr<FileNode> TreeScan::run(const std::string& root) {
    const FolderPlace place{root};
    FolderPlace::Open open = place.open();
    if (!open) {
        control_.couldNotOpen(root, errno);
        return nullptr;
    }
    // The device of the opened folder: a symlink to it may be on another volume.
    const auto status = Platform::entryStatus(open->number(), ".");
    open.reset();
    if (!status) {
        return nullptr;
    }
    device_ = status->identity.device;
    FileNode& node =
        tree_->add({.name = root, .size = status->allocatedBytes, .modified = status->modified});
    Folder folder{nullptr, 0, node, place};
    Crew::run(
        {.kind = Job::Kind::readRoot, .folder = &folder, .index = 0},
        [this](const Job& job, Crew::Member& member) { work(job, member); },
        options_.parallelDepth > 0 ? FolderPlace::mostWalkers() : 1);
    return node.shared();
}

void TreeScan::work(const Job& job, Crew::Member& member) {
    Folder& folder = *job.folder;
    switch (job.kind) {
        case Job::Kind::readRoot:
            read(folder, member);
            break;
        case Job::Kind::enterSubfolder:
            enter(folder, job.index, member);
            break;
        case Job::Kind::lookAtBatch: {
            const std::size_t from = job.index * kBatchSize;
            folder.batches[job.index] =
                lookAt(folder, from, std::min(from + kBatchSize, folder.names.size()));
            if (--folder.unlooked == 0) {
                entriesRead(folder, member);
            }
            break;
        }
    }
}

void TreeScan::enter(Folder& parent, std::size_t slot, Crew::Member& member) {
    if (control_.isCancelled()) {
        if (--parent.unfinished == 0) {
            finish(parent);
        }
        return;
    }
    FileNode& node = *parent.subfolders[slot];
    Folder& folder =
        *(parent.entered[slot] = std::make_unique<Folder>(
              &parent, slot, node, parent.placeOfSubfolders->place(node.name())));
    if (--parent.unentered == 0) {
        parent.placeOfSubfolders.reset();
    }
    read(folder, member);
}

void TreeScan::read(Folder& folder, Crew::Member& member) {
    folder.open = folder.place.open();
    if (!folder.open) {
        control_.couldNotOpen(folder.node.path(), errno);
        finish(folder);
        return;
    }
    Platform::readDirectory(
        folder.open->number(),
        Platform::EntryDetail::kind,
        [&](const Platform::DirectoryEntry& entry) { folder.names.append(entry.name); });
    const std::size_t batches = (folder.names.size() + kBatchSize - 1) / kBatchSize;
    folder.batches.resize(batches);
    if (batches < 2) {
        if (batches == 1) {
            folder.batches.front() = lookAt(folder, 0, folder.names.size());
        }
        entriesRead(folder, member);
        return;
    }
    folder.unlooked = batches;
    std::vector<Job> jobs;
    for (std::size_t i = batches; i-- > 0;) {
        jobs.push_back({.kind = Job::Kind::lookAtBatch, .folder = &folder, .index = i});
    }
    member.keep(jobs);
}

TreeScan::Batch TreeScan::lookAt(const Folder& folder, std::size_t from, std::size_t to) {
    Batch batch;
    batch.leaves.reserve(to - from);
    for (std::size_t i = from; i < to; ++i) {
        const char* name = folder.names[i];
        const auto status = Platform::entryStatus(folder.open->number(), name);
        if (!status) {
            continue;
        }
        Entry entry{.name = name, .bytes = status->allocatedBytes, .modified = status->modified};
        if (status->kind != Platform::EntryStatus::Kind::directory) {
            if (!linkedFiles_.isFirst(*status)) {
                entry.bytes = 0;
            }
            batch.leaves.push_back(entry);
        } else if (status->identity.device == device_ || options_.crossDevices) {
            if (kSyntheticMount.ends_with(name) &&
                Path::join(folder.node.path(), name) == kSyntheticMount) {
                control_.skip(std::string{kSyntheticMount});
            } else {
                batch.subfolders.push_back(entry);
            }
        } else {
            control_.leaveOut(Path::join(folder.node.path(), name));
        }
    }
    return batch;
}

void TreeScan::entriesRead(Folder& folder, Crew::Member& member) {
    std::size_t leafCount = 0;
    std::int64_t leafBytes = 0;
    for (const Batch& batch : folder.batches) {
        leafCount += batch.leaves.size();
        for (const Entry& leaf : batch.leaves) {
            leafBytes = Bytes::sum(leafBytes, leaf.bytes);
        }
    }
    makeNodes(folder, std::cmp_less_equal(leafCount, options_.alwaysKeepBelowCount));
    if (!folder.subfolders.empty()) {
        folder.placeOfSubfolders = folder.place.inside(folder.open);
    }
    folder.open = nullptr;
    folder.place = FolderPlace{""};
    folder.batches = {};
    folder.names = {};
    control_.record(
        static_cast<std::int64_t>(leafCount), leafBytes, [&] { return folder.node.path(); });

    const std::size_t count = folder.subfolders.size();
    if (count == 0) {
        finish(folder);
        return;
    }
    folder.entered.resize(count);
    folder.unentered = count;
    folder.unfinished = count;
    std::vector<Job> jobs;
    jobs.reserve(count);
    for (std::size_t i = count; i-- > 0;) {
        jobs.push_back({.kind = Job::Kind::enterSubfolder, .folder = &folder, .index = i});
    }
    if (folder.depth < options_.parallelDepth && count > 1) {
        member.share(jobs);
    } else {
        member.keep(jobs);
    }
}

/// Makes the nodes of the entries, but of the small leaves only when they are few.
void TreeScan::makeNodes(Folder& folder, bool areFew) {
    const auto isKept = [&](const Entry& leaf) {
        return areFew || leaf.bytes >= options_.keepThreshold;
    };
    std::size_t count = 0;
    std::size_t nameBytes = 0;
    const auto countIn = [&](const Entry& entry) {
        ++count;
        nameBytes += std::string_view{entry.name}.size();
    };
    for (const Batch& batch : folder.batches) {
        std::ranges::for_each(batch.leaves | std::views::filter(isKept), countIn);
        std::ranges::for_each(batch.subfolders, countIn);
    }
    FileTree::Batch nodes{*tree_, count, nameBytes};
    const auto made = [&](const Entry& entry, std::int64_t fileCount) {
        return &nodes.add(
            {.name = entry.name,
             .parent = &folder.node,
             .size = entry.bytes,
             .fileCount = fileCount,
             .modified = entry.modified});
    };
    for (const Batch& batch : folder.batches) {
        for (const Entry& leaf : batch.leaves) {
            if (isKept(leaf)) {
                folder.leaves.push_back(made(leaf, 1));
            } else {
                folder.merged.add(leaf.bytes, 1, leaf.modified);
            }
        }
        for (const Entry& subfolder : batch.subfolders) {
            folder.subfolders.push_back(made(subfolder, 0));
        }
    }
}

void TreeScan::finish(Folder& finished) {
    Folder* folder = &finished;
    while (true) {
        complete(*folder);
        Folder* parent = folder->parent;
        if (parent == nullptr) {
            return;
        }
        parent->entered[folder->slot].reset();
        if (--parent->unfinished > 0) {
            return;
        }
        folder = parent;
    }
}

/// Gives the folder's node its children and its sums.
void TreeScan::complete(Folder& folder) {
    Nodes nodes;
    nodes.reserve(folder.subfolders.size() + folder.leaves.size() + 1);
    // Those that a cancelled scan never entered are no directories yet.
    std::ranges::copy_if(folder.subfolders, std::back_inserter(nodes), &FileNode::isDirectory);
    std::ranges::copy(folder.leaves, std::back_inserter(nodes));
    std::int64_t size = Bytes::sum(folder.node.size, folder.merged.size);
    std::int64_t fileCount = folder.merged.fileCount;
    for (const FileNode* node : nodes) {
        size = Bytes::sum(size, node->size);
        fileCount += node->fileCount;
    }

    Merged merged = folder.merged;
    const auto childCount = static_cast<std::int64_t>(nodes.size()) + merged.count;
    if (childCount > options_.alwaysKeepBelowCount) {
        std::erase_if(nodes, [&](const FileNode* node) {
            if (node->size >= options_.keepThreshold) {
                return false;
            }
            merged.add(node->size, node->fileCount, node->modified);
            return true;
        });
    }
    if (merged.count > 0) {
        const std::string label = std::to_string(merged.count) + " small items";
        FileNode& rest = tree_->add(
            {.name = label,
             .parent = &folder.node,
             .size = merged.size,
             .fileCount = merged.fileCount,
             .modified = merged.modified});
        rest.isAggregate = true;
        nodes.push_back(&rest);
    }
    folder.node.size = size;
    folder.node.fileCount = fileCount;
    tree_->setChildren(folder.node, nodes);
}

}  // namespace Brimlo
