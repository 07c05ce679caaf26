#include "BrimloCore/Platform/Trash.h"

#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Linux/TrashFolder.h"
#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Platform/Linux/UserFolders.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <deque>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

std::unexpected<Error> refuse(int code, std::string phrase) {
    return std::unexpected(
        Error{.domain = kSystemErrorDomain, .code = code, .description = std::move(phrase)});
}

std::unexpected<Error> failure() {
    const int code = errno;
    return refuse(code, reasonNotMoved(code));
}

/// Whether this user may move the item out of the folder, checked before anything is written.
std::expected<void, Error> mayLeave(int folder, const struct stat& item) {
    struct stat status{};
    if (fstat(folder, &status) != 0 || faccessat(folder, ".", W_OK | X_OK, AT_EACCESS) != 0) {
        return errno == EROFS ? failure() : refuse(EACCES, "no permission to change its folder");
    }
    const uid_t user = geteuid();
    const bool isSticky = (status.st_mode & S_ISVTX) != 0;
    if (isSticky && user != 0 && user != item.st_uid && user != status.st_uid) {
        return refuse(EPERM, "it belongs to somebody else");
    }
    return {};
}

}  // namespace

std::string homeTrash() {
    return dataHome() + "/Trash/files";
}

/// The folders of a group, each open once.
struct TrashGroup::Folders {
    std::map<std::string, Descriptor, std::less<>> ofItems;     ///< By path.
    std::deque<std::pair<std::uint64_t, TrashFolder>> trashes;  ///< Of the items on these mounts.
    std::set<int> left;                                         ///< Those that an item has left.
    std::set<const TrashFolder*> reached;

    std::expected<int, Error> open(std::string_view path);
    std::expected<const TrashFolder*, Error> trashFor(int folder, std::string_view path);
};

std::expected<int, Error> TrashGroup::Folders::open(std::string_view path) {
    const auto known = ofItems.find(path);
    if (known != ofItems.end()) {
        return known->second.number();
    }
    auto opened = openFolder(path);
    if (!opened) {
        return refuse(opened.error().code, reasonNotMoved(opened.error().code));
    }
    return ofItems.emplace(path, *std::move(opened)).first->second.number();
}

std::expected<const TrashFolder*, Error> TrashGroup::Folders::trashFor(
    int folder, std::string_view path) {
    const std::uint64_t mount = mountID(folder);
    const auto known =
        std::ranges::find(trashes, mount, [](const auto& each) { return each.first; });
    if (mount != 0 && known != trashes.end()) {  // 0 when the kernel doesn't tell.
        return &known->second;
    }
    auto trash = TrashFolder::forItemsIn(folder, path);
    if (!trash) {
        return std::unexpected(trash.error());
    }
    return &trashes.emplace_back(mount, *std::move(trash)).second;
}

struct TrashMove::State {
    TrashGroup::Folders* folders = nullptr;
    int folder = -1;   ///< The item's.
    std::string name;  ///< The item's name in it.
    FileIdentity identity;
    const TrashFolder* trash = nullptr;
    Descriptor note;        ///< The trashinfo file.
    std::string trashName;  ///< The item's name in the Trash; its trashinfo file exists.
    std::optional<std::string> destination;
    bool keepsNote = false;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    [[nodiscard]] std::string noteName() const { return trashName + std::string{kTrashInfoSuffix}; }

    ~State() {
        if (!trashName.empty() && !keepsNote) {
            unlinkat(trash->info.number(), noteName().c_str(), 0);
        }
    }

    std::expected<void, Error> find(const Request& request);
    std::expected<void, Error> makePlace(const Request& request);
    std::expected<void, Error> writeNoteAs(const std::string& candidate, const TrashInfo& info);
};

/// Opens the item's folder and checks that the item in it is the one that was judged.
std::expected<void, Error> TrashMove::State::find(const Request& request) {
    const std::size_t slash = request.path.rfind('/');
    name = request.path.substr(slash + 1);
    const auto opened = folders->open(std::string_view{request.path}.substr(0, slash));
    if (!opened) {
        return std::unexpected(opened.error());
    }
    folder = *opened;
    const Descriptor item{openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC)};
    struct stat status{};
    if (!item || fstat(item.number(), &status) != 0) {
        return failure();
    }
    identity = identityOf(status);
    if (identity != request.identity) {
        return refuse(ESTALE, "it is not the item that was reviewed");
    }
    // Only a folder has others mounted inside it.
    if (mountID(item.number()) != mountID(folder) ||
        (S_ISDIR(status.st_mode) && MountTable::read().hasMountAtOrBelow(request.path))) {
        return refuse(EBUSY, "a volume is mounted on it or inside it");
    }
    return mayLeave(folder, status);
}

/// Reserves a free name in the Trash by writing the trashinfo file.
std::expected<void, Error> TrashMove::State::makePlace(const Request& request) {
    const std::size_t skipped =
        trash->base.empty() ? 0 : trash->base.size() + (trash->base == "/" ? 0 : 1);
    const TrashInfo info{.path = request.path.substr(skipped), .entryID = request.entryID};
    // After the first few the number is random: counting up would take longer with every item of
    // this name.
    constexpr int kNumberedInOrder = 16;
    constexpr int kMostNames = 64;
    std::random_device random;
    std::uniform_int_distribution<int> anyNumber{kNumberedInOrder + 1, 999'999'999};
    for (int attempt = 1; attempt <= kMostNames; ++attempt) {
        const std::string candidate =
            nameInTrash(name, attempt <= kNumberedInOrder ? attempt : anyNumber(random));
        auto written = writeNoteAs(candidate, info);
        if (written) {
            destination = trash->path + "/files/" + trashName;
            return {};
        }
        if (written.error().code != EEXIST) {
            return written;
        }
    }
    return refuse(EEXIST, "no free name was found for it in the Trash");
}

std::expected<void, Error> TrashMove::State::writeNoteAs(
    const std::string& candidate, const TrashInfo& info) {
    note = Descriptor{openat(
        trash->info.number(),
        (candidate + std::string{kTrashInfoSuffix}).c_str(),
        O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
        0600)};
    if (!note) {
        return failure();
    }
    trashName = candidate;  // From here on the trashinfo file is removed with this object.
    struct stat status{};
    if (fstatat(trash->files.number(), candidate.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        // An item without trashinfo file has this name, and keeps it.
        unlinkat(trash->info.number(), noteName().c_str(), 0);
        trashName.clear();
        return refuse(EEXIST, reasonNotMoved(EEXIST));
    }
    if (!writeBytes(note.number(), info.text(std::time(nullptr)))) {
        return failure();
    }
    // Started for all files of the group, the writing is done when the first is waited for.
    sync_file_range(note.number(), 0, 0, SYNC_FILE_RANGE_WRITE);
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

std::expected<void, Error> TrashMove::syncInfo() {
    if (fdatasync(state_->note.number()) != 0) {
        return failure();
    }
    state_->note = Descriptor{};
    return {};
}

std::expected<TrashedItem, Error> TrashMove::commit() {
    const int files = state_->trash->files.number();
    const char* name = state_->name.c_str();
    const char* trashName = state_->trashName.c_str();
    if (renameat2(state_->folder, name, files, trashName, RENAME_NOREPLACE) != 0) {
        return failure();
    }
    state_->folders->left.insert(state_->folder);
    state_->folders->reached.insert(state_->trash);
    TrashedItem item{.path = state_->destination, .warning = std::nullopt};
    struct stat status{};
    if (fstatat(files, trashName, &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        identityOf(status) != state_->identity) {
        // Another item took the name in the last moment.
        if (renameat2(files, trashName, state_->folder, name, RENAME_NOREPLACE) == 0) {
            return refuse(ESTALE, "it is not the item that was reviewed");
        }
        item.warning = "another item stood in its place and lies in the Trash now";
    }
    state_->keepsNote = true;
    return item;
}

TrashGroup::TrashGroup()
    : folders_{std::make_unique<Folders>()} {}
TrashGroup::~TrashGroup() = default;

std::size_t TrashGroup::size() {
    constexpr rlim_t kMost = 64;      // More at once gain little.
    constexpr rlim_t kOfOthers = 40;  // Descriptors that the rest of the process may have open.
    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) != 0 || files.rlim_cur <= kOfOthers) {
        return 1;
    }
    // A move has its trashinfo file open, and its folder unless another item's is the same.
    return std::clamp<rlim_t>((files.rlim_cur - kOfOthers) / 2, 1, kMost);
}

std::expected<TrashMove, Error> TrashGroup::prepare(const TrashMove::Request& request) {
    auto state = std::make_unique<TrashMove::State>();
    state->folders = folders_.get();
    if (auto found = state->find(request); !found) {
        return std::unexpected(found.error());
    }
    const auto trash = folders_->trashFor(state->folder, request.path);
    if (!trash) {
        return std::unexpected(trash.error());
    }
    state->trash = *trash;
    if ((state->trash->path + "/files/").starts_with(request.path + "/")) {
        return refuse(EINVAL, "the Trash itself lies inside it");
    }
    if (state->trash->holds(state->folder)) {
        return refuse(EINVAL, "it is part of the Trash or lies there already");
    }
    if (auto made = state->makePlace(request); !made) {
        return std::unexpected(made.error());
    }
    return TrashMove{std::move(state)};
}

void TrashGroup::sync() {
    // In this order, so that after a power cut each item is in at least one of the two places.
    for (const int folder : std::exchange(folders_->left, {})) {
        syncFolder(folder);
    }
    for (const TrashFolder* trash : std::exchange(folders_->reached, {})) {
        syncFolder(trash->files.number());
        syncFolder(trash->info.number());
    }
}

}  // namespace Brimlo::Platform
