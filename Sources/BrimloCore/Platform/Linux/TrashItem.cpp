#include "BrimloCore/Platform/TrashItem.h"

#include "BrimloCore/Platform/DirectoryReader.h"
#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/FolderAccess.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"
#include "BrimloCore/Platform/Posix/RemoveTree.h"
#include "BrimloCore/Platform/Trash.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <filesystem>
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

/// Where an item in the Trash lies. No folder of a Trash is a link: one that is could lead to
/// things that nobody has thrown away.
struct Place {
    Descriptor trash;  ///< The folder that holds "files" and "info".
    Descriptor info;
    Descriptor files;
    std::string name;  ///< The item's in "files".

    explicit Place(const std::string& trashPath) {
        const fs::path path{trashPath};
        const fs::path folder = path.parent_path().parent_path();
        const Descriptor above{
            open(folder.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
        trash = openFolderIn(above, folder.filename());
        info = openFolderIn(trash, "info");
        // The last, so that its failure is the one that `errno` tells.
        files = openFolderIn(trash, path.parent_path().filename());
        name = path.filename();
    }

    [[nodiscard]] std::string note() const { return name + std::string{kTrashInfoSuffix}; }

    /// The journal entry that the note names.
    [[nodiscard]] std::optional<std::string> entryID() const {
        constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
        const Descriptor file{openat(info.number(), note().c_str(), kFlags)};
        std::array<char, 16384> text{};  // A path of 4,096 bytes is three times as long, encoded.
        const ssize_t length = file ? read(file.number(), text.data(), text.size()) : -1;
        if (length <= 0) {
            return std::nullopt;
        }
        const auto found = TrashInfo::parse({text.data(), static_cast<std::size_t>(length)});
        return found ? found->entryID : std::nullopt;
    }

    /// Whether the item is gone and its note is so old that no clean is about to bring the item.
    [[nodiscard]] bool hasStrayNote() const {
        constexpr std::time_t kDay = 86'400;
        struct stat status {};
        const bool isOld =
            fstatat(info.number(), note().c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            status.st_mtim.tv_sec <= std::time(nullptr) - kDay;
        return isOld && entryID() &&
               fstatat(files.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
               errno == ENOENT;
    }

    void removeNote() const { unlinkat(info.number(), note().c_str(), 0); }

    /// The folder beside "files" in which other programs too put what is being deleted.
    enum class Missing { made, left };
    [[nodiscard]] Descriptor openExpunged(Missing missing) const {
        if (missing == Missing::made) {
            mkdirat(trash.number(), "expunged", 0700);
        }
        return openFolderIn(trash, "expunged");
    }

private:
    static Descriptor openFolderIn(const Descriptor& parent, const fs::path& folderName) {
        constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        return parent ? Descriptor{openat(parent.number(), folderName.c_str(), kFlags)}
                      : Descriptor{};
    }
};

/// Moves an item within the Trash. A folder's own permissions can forbid that to all but root.
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

/// The name that an item has while it is deleted: nobody else uses it, and it tells by whom.
std::string nameAside(pid_t process, const FileIdentity& identity) {
    return "brimlo-" + std::to_string(process) + "-" + identity.text();
}

/// Whether this is an item whose deletion nobody is about any more. Something else that lies there,
/// because it took an item's place and could not be put back, is not.
bool isLeftover(int folder, const std::string& name) {
    pid_t process = 0;
    struct stat status {};
    const char* digits = name.data() + std::min(name.find('-') + 1, name.size());
    std::from_chars(digits, name.data() + name.size(), process);
    return process > 0 && kill(process, 0) != 0 && errno == ESRCH &&
           fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           name == nameAside(process, {status.st_dev, status.st_ino});
}

}  // namespace

std::optional<std::string> entryID(const std::string& trashPath) {
    return Place{trashPath}.entryID();
}

void removeLeftovers() {
    Place place{homeTrash() + "/"};
    const Descriptor expunged = place.openExpunged(Place::Missing::left);
    for (const std::string& name : namesIn(expunged)) {
        if (isLeftover(expunged.number(), name)) {
            static_cast<void>(removeTree(expunged.number(), name));
        }
    }
    for (const std::string& note : namesIn(place.info)) {
        if (place.files && note.ends_with(kTrashInfoSuffix)) {
            place.name = note.substr(0, note.size() - kTrashInfoSuffix.size());
            if (place.hasStrayNote()) {
                place.removeNote();
            }
        }
    }
}

std::expected<void, Error> putBack(const std::string& trashPath, const std::string& path) {
    const Place place{trashPath};
    const std::size_t slash = path.rfind('/');
    const Descriptor target{
        open(path.substr(0, slash + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!place.files || !target) {
        return failure();
    }
    const int files = place.files.number();
    const std::string name = path.substr(slash + 1);
    if (renameat2(files, place.name.c_str(), target.number(), name.c_str(), RENAME_NOREPLACE) !=
        0) {
        return failure();
    }
    // In this order, as on the way in: the other leaves the item in both places after a power cut.
    fsync(files);
    fsync(target.number());
    place.removeNote();
    return {};
}

std::expected<void, Error> remove(const std::string& trashPath, const FileIdentity& identity) {
    const Place place{trashPath};
    const int files = place.files.number();
    const Descriptor expunged =
        place.files ? place.openExpunged(Place::Missing::made) : Descriptor{};
    if (!expunged) {
        return failure();
    }
    // Under a name that nobody else uses, what was looked at is what is deleted.
    const std::string aside = nameAside(getpid(), identity);
    if (!moveAside(files, place.name, expunged.number(), aside)) {
        return failure();
    }
    struct stat status {};
    const bool isMeant =
        fstatat(expunged.number(), aside.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        identityOf(status) == identity;
    auto removed = isMeant ? removeTree(expunged.number(), aside) : failure(ESTALE);
    if (removed) {
        place.removeNote();
    } else {
        moveAside(expunged.number(), aside, files, place.name);
    }
    return removed;
}

}  // namespace Brimlo::Platform::TrashItem
