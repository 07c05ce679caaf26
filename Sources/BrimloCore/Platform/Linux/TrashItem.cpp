#include "BrimloCore/Platform/TrashItem.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Linux/TrashFolder.h"
#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/Trash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <set>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform::TrashItem {

namespace {

namespace fs = std::filesystem;

std::unexpected<Error> failure(int code = errno) {
    return std::unexpected(Error::fromSystem(code));
}

/// An item in the Trash, whether it exists or not.
struct Item {
    TrashFolder trash;
    std::string name;  ///< In "files".

    static std::expected<Item, Error> at(const std::string& trashPath) {
        auto trash = TrashFolder::holding(trashPath);
        if (!trash) {
            return std::unexpected(trash.error());
        }
        return Item{.trash = *std::move(trash), .name = fs::path{trashPath}.filename()};
    }

    [[nodiscard]] std::string infoName() const { return name + std::string{kTrashInfoSuffix}; }

    /// What the trashinfo file tells; nullopt when it names no path.
    [[nodiscard]] std::expected<std::optional<TrashInfo>, Error> note() const {
        constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
        const Descriptor file{openat(trash.info.number(), infoName().c_str(), kFlags)};
        std::array<char, 16384>
            text{};  // A path of 4,096 bytes, encoded, is up to three times as long.
        const ssize_t length = file ? read(file.number(), text.data(), text.size()) : -1;
        if (length < 0) {
            return failure();
        }
        return TrashInfo::parse({text.data(), static_cast<std::size_t>(length)});
    }

    /// The journal entry in the trashinfo file; ENOENT when there is none.
    [[nodiscard]] std::expected<std::string, Error> entryID() const {
        const auto found = note();
        if (!found) {
            return std::unexpected(found.error());
        }
        return *found && (*found)->entryID ? std::expected<std::string, Error>{*(*found)->entryID}
                                           : failure(ENOENT);
    }

    /// Whether the item is gone and its trashinfo file too old for a clean that is still running.
    [[nodiscard]] bool hasStrayInfo() const {
        constexpr std::time_t kDay = 86'400;
        struct stat status{};
        const int info = trash.info.number();
        const bool isOld = fstatat(info, infoName().c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                           status.st_mtim.tv_sec <= std::time(nullptr) - kDay;
        return isOld && entryID() &&
               fstatat(trash.files.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
               errno == ENOENT;
    }

    void removeInfo() const { unlinkat(trash.info.number(), infoName().c_str(), 0); }
};

/// The folder beside "files" for items being deleted, as other programs use it, too.
Descriptor openExpunged(const TrashFolder& trash) {
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    return Descriptor{openat(trash.files.number(), "../expunged", kFlags)};
}

/// Moves an item within the Trash. The permissions of a folder can forbid that to all but root.
bool moveAside(int from, const std::string& name, int to, const std::string& newName) {
    const auto move = [&] {
        return renameat2(from, name.c_str(), to, newName.c_str(), RENAME_NOREPLACE) == 0;
    };
    return move() || (errno == EACCES && makeWritable(from, name) && move());
}

std::vector<std::string> namesIn(const Descriptor& folder) {
    std::vector<std::string> names;
    if (folder) {
        readDirectory(folder.number(), EntryDetail::kind, [&](const DirectoryEntry& entry) {
            names.emplace_back(entry.name);
        });
    }
    return names;
}

/// The name of an item while it is deleted: unique, and holding the id of the process.
std::string nameAside(pid_t process, const FileIdentity& identity) {
    return "brimlo-" + std::to_string(process) + "-" + identity.text();
}

/// The identity of a leftover of a deletion whose process died; nullopt for anything else.
std::optional<FileIdentity> leftover(int folder, const std::string& name) {
    pid_t process = 0;
    struct stat status{};
    const char* digits = name.data() + std::min(name.find('-') + 1, name.size());
    std::from_chars(digits, name.data() + name.size(), process);
    const bool isLeft = process > 0 && kill(process, 0) != 0 && errno == ESRCH &&
                        fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                        name == nameAside(process, identityOf(status));
    return isLeft ? std::optional{identityOf(status)} : std::nullopt;
}

/// The paths of the "files" folders that this user's Trashes may have.
std::vector<std::string> folderPaths() {
    const std::string user = std::to_string(getuid());
    std::vector<std::string> paths{homeTrash()};
    for (const fs::path top : MountTable::read().localPoints()) {
        for (const std::string& name : {".Trash/" + user, ".Trash-" + user}) {
            paths.push_back(top / name / "files");
        }
    }
    return paths;
}

/// Where an item was; nullopt when it can't go back there. Anybody may have written the Trash of a
/// volume, so the place that it names must lie on the volume.
std::optional<std::string> placeOf(const TrashInfo& note, const TrashFolder& trash) {
    const fs::path named{note.path};
    const bool isOfVolume = !trash.base.empty();
    if (note.path.empty() || note.path.contains('\0') || named.is_relative() != isOfVolume ||
        std::ranges::find(named, fs::path{".."}) != named.end()) {
        return std::nullopt;
    }
    const fs::path place = trash.base / named;
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(place.parent_path(), error);
    const bool isOutside =
        isOfVolume && (error || *folder.lexically_relative(trash.base).begin() == "..");
    return isOutside ? std::nullopt : std::optional{place.string()};
}

std::string_view inode(std::string_view identity) {
    return identity.substr(identity.rfind(':') + 1);
}

}  // namespace

Listing list() {
    Listing listing;
    for (const std::string& files : folderPaths()) {
        auto trash =
            files == homeTrash() ? TrashFolder::home() : TrashFolder::holding(files + "/any");
        if (!trash) {
            if (trash.error().code != ENOENT && trash.error().code != ENXIO) {
                listing.closed.emplace_back(files, trash.error());
            }
            continue;
        }
        Item item{.trash = *std::move(trash), .name = ""};
        for (const std::string& name : namesIn(item.trash.files)) {
            struct stat status{};
            if (fstatat(item.trash.files.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) !=
                0) {
                continue;  // Another program removed it first.
            }
            item.name = name;
            const auto note = item.note().value_or(std::nullopt);
            listing.items.push_back({
                .trashPath = files + "/" + name,
                .identity = identityOf(status),
                .path = note ? placeOf(*note, item.trash) : std::nullopt,
                .date = note ? note->date : std::nullopt,
            });
        }
    }
    return listing;
}

std::expected<FileIdentity, Error> find(
    const std::string& trashPath,
    const std::string& entryID,
    const std::optional<std::string>& recorded) {
    // Most items of a long journal are gone. Two calls show that where the folder still exists;
    // opening and checking the Trash takes twenty.
    const fs::path path{trashPath};
    struct stat none{};
    if (lstat(path.c_str(), &none) != 0 && errno == ENOENT &&
        lstat(path.parent_path().c_str(), &none) == 0) {
        return failure(ENOENT);
    }
    const auto item = Item::at(trashPath);
    if (!item) {
        return std::unexpected(item.error());
    }
    struct stat status{};
    const int files = item->trash.files.number();
    if (fstatat(files, item->name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failure();
    }
    const auto named = item->entryID();
    if (!named) {
        return std::unexpected(named.error());
    }
    const FileIdentity identity = identityOf(status);
    if (*named != entryID || (recorded && inode(*recorded) != inode(identity.text()))) {
        return failure(ENOENT);
    }
    return identity;
}

void removeLeftovers() {
    auto trash = TrashFolder::home();
    if (!trash) {
        return;
    }
    const Descriptor expunged = openExpunged(*trash);
    for (const std::string& name : namesIn(expunged)) {
        if (const auto identity = leftover(expunged.number(), name)) {
            static_cast<void>(removeTree(expunged.number(), name, *identity));
        }
    }
    Item item{.trash = *std::move(trash), .name = ""};
    for (const std::string& note : namesIn(item.trash.info)) {
        if (note.ends_with(kTrashInfoSuffix)) {
            item.name = note.substr(0, note.size() - kTrashInfoSuffix.size());
            if (item.hasStrayInfo()) {
                item.removeInfo();
            }
        }
    }
}

std::expected<void, Error> putBack(
    const std::string& trashPath, const FileIdentity& identity, const std::string& path) {
    const auto item = Item::at(trashPath);
    if (!item) {
        return std::unexpected(item.error());
    }
    const std::size_t slash = path.rfind('/');
    const Descriptor target{
        open(path.substr(0, slash + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!target) {
        return failure();
    }
    const int files = item->trash.files.number();
    const char* trashName = item->name.c_str();
    const std::string name = path.substr(slash + 1);
    if (renameat2(files, trashName, target.number(), name.c_str(), RENAME_NOREPLACE) != 0) {
        return failure();
    }
    struct stat status{};
    if (fstatat(target.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        identityOf(status) != identity) {
        // Another item took its name in the last moment.
        renameat2(target.number(), name.c_str(), files, trashName, RENAME_NOREPLACE);
        return failure(ESTALE);
    }
    return {};
}

void settle(const std::vector<Returned>& returned) {
    // In this order, as on the way in: the other can leave an item in both places after a power
    // cut.
    std::set<std::string> trashes;
    std::set<std::string> targets;
    for (const auto& [trashPath, path] : returned) {
        trashes.insert(fs::path{trashPath}.parent_path());
        targets.insert(fs::path{path}.parent_path());
    }
    for (const auto* folders : {&trashes, &targets}) {
        for (const std::string& folder : *folders) {
            const Descriptor open{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
            syncFolder(open.number());
        }
    }
    for (const auto& [trashPath, path] : returned) {
        if (const auto item = Item::at(trashPath)) {
            item->removeInfo();
        }
    }
}

std::expected<void, Error> remove(const std::string& trashPath, const FileIdentity& identity) {
    const auto item = Item::at(trashPath);
    if (!item) {
        return std::unexpected(item.error());
    }
    const int files = item->trash.files.number();
    mkdirat(files, "../expunged", 0700);
    const Descriptor expunged = openExpunged(item->trash);
    // Under a unique name the item that was checked is the one deleted. The move can fail on a full
    // disk; then the item is deleted in place.
    const std::string aside = nameAside(getpid(), identity);
    const bool isAside = expunged && moveAside(files, item->name, expunged.number(), aside);
    auto removed = isAside ? removeTree(expunged.number(), aside, identity)
                           : removeTree(files, item->name, identity);
    if (removed) {
        item->removeInfo();
    } else if (isAside) {
        moveAside(expunged.number(), aside, files, item->name);
    }
    return removed;
}

}  // namespace Brimlo::Platform::TrashItem
