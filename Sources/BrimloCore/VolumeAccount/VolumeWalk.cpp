#include "BrimloCore/VolumeAccount/VolumeWalk.h"

#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/VolumeParts.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace Brimlo {

namespace {

using Platform::EntryStatus;

constexpr std::size_t kSeveral = std::numeric_limits<std::size_t>::max();

}  // namespace

struct VolumeWalk::Subfolder {
    std::string name;
    std::int64_t bytes = 0;
    std::uint64_t device = 0;
};

/// A folder whose subfolders wait to be entered. It lives until the last of them is.
struct VolumeWalk::Folder {
    std::string path;
    std::size_t area = 0;
    bool isSplit = false;  ///< Whether each folder in it is an area of its own.
    std::uint64_t device = 0;
    FolderPlace::Inside inside;
    std::vector<Subfolder> subfolders;
};

/// What the entries of one folder come to.
struct VolumeWalk::Found {
    std::int64_t files = 0;
    std::int64_t bytes = 0;
    std::vector<EntryStatus> linked;
};

VolumeWalk::VolumeWalk(ScanControl& control, std::string home, std::vector<std::string> trashes)
    : control_{control}
    , home_{std::move(home)}
    , trashes_{std::move(trashes)} {}

void VolumeWalk::count(const std::string& top) {
    const FolderPlace place{top};
    const FolderPlace::Open open = place.open();
    const auto status = open ? Platform::entryStatus(open->number(), ".") : std::nullopt;
    if (!status) {
        control_.couldNotOpen(top, errno);
        return;
    }
    top_ = *status;
    devices_.insert(status->identity.device);
    Folder folder{.path = top, .isSplit = true, .device = status->identity.device};
    folder.area = areas_.size();
    areas_.push_back({.name = top, .bytes = status->allocatedBytes});
    Crew::run(
        {},
        [&](const Job& job, Crew::Member& member) {
            if (control_.isCancelled()) {
                return;
            }
            if (job.parent == nullptr) {
                read(folder, place, open, member);
            } else {
                enter(*job.parent, job.parent->subfolders[job.index], member);
            }
        },
        FolderPlace::mostWalkers());
}

void VolumeWalk::enter(const Folder& parent, const Subfolder& folder, Crew::Member& member) {
    std::string path = Path::join(parent.path, folder.name);
    const FolderPlace place = parent.inside.place(folder.name);
    const FolderPlace::Open open = place.open();
    const int code = errno;
    if (open && folder.device != parent.device && isLeftOut(path, folder.device, open)) {
        return;
    }
    const std::size_t area = areaOf(path, parent);
    add(area, {.bytes = folder.bytes});
    if (!open) {
        control_.couldNotOpen(std::move(path), code);
        return;
    }
    const bool isSplit = path == home_;
    read(
        {.path = std::move(path), .area = area, .isSplit = isSplit, .device = folder.device},
        place,
        open,
        member);
}

void VolumeWalk::read(
    Folder folder, const FolderPlace& place, const FolderPlace::Open& open, Crew::Member& member) {
    Found found;
    Platform::readDirectory(
        open->number(), Platform::EntryDetail::kind, [&](const Platform::DirectoryEntry& entry) {
            const auto status = Platform::entryStatus(open->number(), entry.name);
            if (!status) {
                return;
            }
            if (status->kind != EntryStatus::Kind::directory) {
                ++found.files;
                if (status->linkCount > 1) {
                    found.linked.push_back(*status);
                } else {
                    found.bytes = Bytes::sum(found.bytes, status->allocatedBytes);
                }
            } else if (isOnMount(*status)) {
                folder.subfolders.push_back(
                    {entry.name, status->allocatedBytes, status->identity.device});
            } else {
                control_.leaveOut(Path::join(folder.path, entry.name));
            }
        });
    add(folder.area, found);
    control_.record(found.files, found.bytes, [&] { return folder.path; });
    if (folder.subfolders.empty()) {
        return;
    }
    folder.inside = place.inside(open);
    const auto shared = std::make_shared<const Folder>(std::move(folder));
    std::vector<Job> jobs;
    jobs.reserve(shared->subfolders.size());
    for (std::size_t i = shared->subfolders.size(); i-- > 0;) {
        jobs.push_back({.parent = shared, .index = i});
    }
    member.keep(jobs);
}

void VolumeWalk::add(std::size_t area, const Found& found) {
    const std::lock_guard guard{lock_};
    AccountLine& line = areas_[area];
    line.files += found.files;
    line.bytes = Bytes::sum(line.bytes, found.bytes);
    for (const EntryStatus& status : found.linked) {
        const auto [known, isNew] =
            linked_.try_emplace(status.identity, Linked{area, status.allocatedBytes});
        if (!isNew) {
            --line.files;
            known->second.area = known->second.area == area ? area : kSeveral;
        }
    }
}

/// The folders of the top and of the home, the home itself and the Trash are areas.
std::size_t VolumeWalk::areaOf(const std::string& path, const Folder& parent) {
    const bool isTrash = std::ranges::find(trashes_, path) != trashes_.end();
    if (!isTrash && !parent.isSplit && path != home_) {
        return parent.area;
    }
    const std::lock_guard guard{lock_};
    areas_.push_back(
        {.kind = isTrash ? AccountLine::Kind::trash : AccountLine::Kind::area, .name = path});
    return areas_.size() - 1;
}

bool VolumeWalk::isOnMount(const EntryStatus& status) const {
    return status.mount == top_.mount &&
           (status.mount != 0 || status.identity.device == top_.identity.device);
}

/// Of a subvolume that is a snapshot. Any other is noted as a part of the volume.
bool VolumeWalk::isLeftOut(
    const std::string& path, std::uint64_t device, const FolderPlace::Open& open) {
    const bool isSnapshot = Platform::isInSnapshot(open->number());
    const std::lock_guard guard{lock_};
    if (isSnapshot) {
        snapshots_.push_back(path);
    } else {
        devices_.insert(device);
    }
    return isSnapshot;
}

std::vector<AccountLine> VolumeWalk::lines() const {
    const std::lock_guard guard{lock_};
    std::vector<AccountLine> lines = areas_;
    AccountLine several{
        .kind = AccountLine::Kind::severalAreas, .name = "Files with names in several folders"};
    for (const auto& [identity, file] : linked_) {
        AccountLine& line = file.area == kSeveral ? several : lines[file.area];
        line.bytes = Bytes::sum(line.bytes, file.bytes);
    }
    lines.push_back(std::move(several));
    return lines;
}

std::vector<std::string> VolumeWalk::snapshots() const {
    const std::lock_guard guard{lock_};
    std::vector<std::string> paths = snapshots_;
    std::ranges::sort(paths);
    return paths;
}

}  // namespace Brimlo
