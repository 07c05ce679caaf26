#include "BrimloCore/Platform/Trash.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

// The system moves the item, because only the system knows the Trash of each volume, chooses the
// name there and lets the Finder put the item back. Its call takes a path, not a descriptor, so the
// item's identity is checked right before and right after the move, and a wrong item goes back.

namespace Brimlo::Platform {

namespace {

std::unexpected<Error> refuse(int code, std::string phrase) {
    return std::unexpected(
        Error{.domain = kSystemErrorDomain, .code = code, .description = std::move(phrase)});
}

std::unexpected<Error> failure(int code = errno) {
    return refuse(code, reasonNotMoved(code));
}

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// Whether a volume is mounted in the folder; false when unknown.
bool holdsMount(const std::string& path) {
    const int count = getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<struct statfs> mounts(static_cast<std::size_t>(std::max(0, count)));
    const int known = getfsstat(
        mounts.data(), static_cast<int>(mounts.size() * sizeof(struct statfs)), MNT_NOWAIT);
    mounts.resize(static_cast<std::size_t>(std::clamp(known, 0, std::max(0, count))));
    return std::ranges::any_of(mounts, [&](const struct statfs& mount) {
        const std::string_view point = mount.f_mntonname;
        return isAtOrBelow(point, path) || isAtOrBelow(point, "/private" + path);
    });
}

/// Refuses items that contain the Trash or are in it.
std::expected<void, Error> mayGoToTrash(const std::string& path) {
    const std::string trash = homeTrash();
    if (isAtOrBelow(path, trash) || (path + "/").contains("/.Trashes/")) {
        return refuse(EINVAL, "it is part of the Trash or lies there already");
    }
    if (isAtOrBelow(trash, path)) {
        return refuse(EINVAL, "the Trash itself lies inside it");
    }
    return {};
}

}  // namespace

std::string homeTrash() {
    return homeFolder() + "/.Trash";
}

struct TrashMove::State {
    std::string path;
    FileIdentity identity;
    Descriptor folder;  ///< The item's.
    std::string name;   ///< The item's name in it.
    BOOL isDirectory = NO;
    std::optional<std::string> destination;  ///< The system tells only afterwards.

    std::expected<void, Error> find();
    [[nodiscard]] std::expected<TrashedItem, Error> judge(const std::string& trashPath) const;
};

/// Checks that the item is the one that was judged.
std::expected<void, Error> TrashMove::State::find() {
    struct stat status{};
    struct stat around{};
    if (fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        fstat(folder.number(), &around) != 0) {
        return failure();
    }
    if (identityOf(status) != identity) {
        return refuse(ESTALE, "it is not the item that was reviewed");
    }
    isDirectory = S_ISDIR(status.st_mode);
    if (status.st_dev != around.st_dev || (isDirectory && holdsMount(path))) {
        return refuse(EBUSY, "a volume is mounted on it or inside it");
    }
    return {};
}

TrashMove::TrashMove(std::unique_ptr<State> state)
    : state_(std::move(state)) {}
TrashMove::TrashMove(TrashMove&&) noexcept = default;
TrashMove& TrashMove::operator=(TrashMove&&) noexcept = default;
TrashMove::~TrashMove() = default;

const std::optional<std::string>& TrashMove::destination() const {
    return state_->destination;
}

struct TrashGroup::Folders {};

TrashGroup::TrashGroup() = default;
TrashGroup::~TrashGroup() = default;

std::size_t TrashGroup::size() {
    return 1;
}

std::expected<TrashMove, Error> TrashGroup::prepare(const TrashMove::Request& request) {
    if (auto may = mayGoToTrash(request.path); !may) {
        return std::unexpected(may.error());
    }
    const std::size_t slash = request.path.rfind('/');
    auto folder = openFolder(std::string_view{request.path}.substr(0, slash));
    if (!folder) {
        return failure(folder.error().code);
    }
    auto state = std::make_unique<TrashMove::State>();
    state->path = request.path;
    state->identity = request.identity;
    state->folder = *std::move(folder);
    state->name = request.path.substr(slash + 1);
    if (auto found = state->find(); !found) {
        return std::unexpected(found.error());
    }
    return TrashMove{std::move(state)};
}

// Each move syncs its folders itself: a group has one.
void TrashGroup::sync() {}

// The system writes what the Finder needs to put an item back.
std::expected<void, Error> TrashMove::syncInfo() {
    return {};
}

std::expected<TrashedItem, Error> TrashMove::commit() {
    if (auto found = state_->find(); !found) {
        return std::unexpected(found.error());
    }
    @autoreleasepool {
        NSURL* moved = nil;
        NSError* error = nil;
        if (![NSFileManager.defaultManager trashItemAtURL:fileUrl(state_->path, state_->isDirectory)
                                         resultingItemURL:&moved
                                                    error:&error]) {
            return std::unexpected(cocoaError(error));
        }
        syncFolder(state_->folder.number());
        if (moved == nil) {
            return TrashedItem{};
        }
        return state_->judge(text(moved.path));
    }
}

/// Checks that the item now in the Trash is the right one.
std::expected<TrashedItem, Error> TrashMove::State::judge(const std::string& trashPath) const {
    TrashedItem item{.path = trashPath, .warning = std::nullopt};
    if (FileIdentity::of(trashPath) != identity) {
        // Another item took the name in the last moment.
        if (renameatx_np(AT_FDCWD, trashPath.c_str(), folder.number(), name.c_str(), RENAME_EXCL) ==
            0) {
            return refuse(ESTALE, "it is not the item that was reviewed");
        }
        item.warning = "another item stood in its place and lies in the Trash now";
    }
    const Descriptor trash{open(
        trashPath.substr(0, trashPath.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (trash) {
        syncFolder(trash.number());
    }
    return item;
}

}  // namespace Brimlo::Platform
