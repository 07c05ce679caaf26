#include "BrimloCore/Platform/TrashItem.h"

#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform::TrashItem {

namespace {

std::unexpected<Error> failure(int code = errno) {
    return std::unexpected(Error::fromSystem(code));
}

/// The folder that an entry lies in, and its name there.
struct Place {
    std::expected<Descriptor, Error> folder;
    std::string name;

    explicit Place(const std::string& path)
        : folder{openFolder(std::string_view{path}.substr(0, path.rfind('/')))}
        , name{path.substr(path.rfind('/') + 1)} {}
};

/// Whether a path leads directly into the home Trash or into this user's on another volume.
bool isInATrash(const std::string& path) {
    const std::filesystem::path item{path};
    const std::string folder = item.parent_path();
    const std::string ofVolume = "/.Trashes/" + std::to_string(getuid());
    return item.is_absolute() && item.lexically_normal() == item && item.has_filename() &&
           (folder == homeTrash() ||
            (folder.starts_with("/Volumes/") && folder.ends_with(ofVolume)));
}

/// Moves an item to where nothing is. A folder's own permissions can forbid that to all but root.
bool moveWithout(int from, const std::string& name, int to, const std::string& newName) {
    const auto move = [&] {
        return renameatx_np(from, name.c_str(), to, newName.c_str(), RENAME_EXCL) == 0;
    };
    return move() || (errno == EACCES && makeWritable(from, name) && move());
}

/// For volumes that have no move of the kind that never overwrites: Foundation looks before it
/// moves. It would also copy to another volume, hence the test.
std::expected<void, Error> moveByFoundation(
    const Place& from, const std::string& path, const Place& to, const std::string& newPath) {
    if (mountID(from.folder->number()) != mountID(to.folder->number())) {
        return failure(EXDEV);
    }
    @autoreleasepool {
        struct stat status {};
        const BOOL isDirectory = lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
        NSError* error = nil;
        if (![NSFileManager.defaultManager moveItemAtURL:fileUrl(path, isDirectory)
                                                   toURL:fileUrl(newPath, isDirectory)
                                                   error:&error]) {
            return std::unexpected(cocoaError(error));
        }
    }
    return {};
}

}  // namespace

std::expected<FileIdentity, Error> find(
    const std::string& trashPath,
    const std::string& /*entryID*/,
    const std::optional<std::string>& recorded) {
    if (trashPath.contains('\0') || !isInATrash(trashPath)) {
        return failure(ENOENT);
    }
    struct stat status {};
    if (lstat(trashPath.c_str(), &status) != 0) {
        return failure();
    }
    const FileIdentity identity = identityOf(status);
    return !recorded || *recorded == identity.text() ? std::expected<FileIdentity, Error>{identity}
                                                     : failure(ENOENT);
}

std::expected<void, Error> putBack(
    const std::string& trashPath, const FileIdentity& identity, const std::string& path) {
    const Place trash{trashPath};
    // The user's own way to the folder may well lead over a link.
    Place target{"/"};
    target.name = path.substr(path.rfind('/') + 1);
    target.folder = Descriptor{
        open(path.substr(0, path.rfind('/') + 1).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!*target.folder) {
        return failure();
    }
    if (!trash.folder) {
        return std::unexpected(trash.folder.error());
    }
    const int from = trash.folder->number();
    const int to = target.folder->number();
    struct stat status {};
    if (fstatat(from, trash.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failure();
    }
    if (identityOf(status) != identity) {
        return failure(ESTALE);
    }
    if (renameatx_np(from, trash.name.c_str(), to, target.name.c_str(), RENAME_EXCL) != 0) {
        if (errno != ENOTSUP && errno != EINVAL) {
            return failure();
        }
        if (auto moved = moveByFoundation(trash, trashPath, target, path); !moved) {
            return moved;
        }
    }
    syncFolder(to);
    syncFolder(from);
    return {};
}

std::expected<void, Error> remove(const std::string& trashPath, const FileIdentity& identity) {
    const Place trash{trashPath};
    if (!trash.folder) {
        return std::unexpected(trash.folder.error());
    }
    const int folder = trash.folder->number();
    // Under a name that nobody else uses, what was looked at is what is deleted.
    const std::string aside = ".brimlo-" + std::to_string(getpid()) + "-" + identity.text();
    // The longer name can take room that a full disk does not have.
    const bool isAside = moveWithout(folder, trash.name, folder, aside);
    auto removed = removeTree(folder, isAside ? aside : trash.name, identity);
    if (!removed && isAside) {
        moveWithout(folder, aside, folder, trash.name);
    }
    return removed;
}

/// There are no notes here, and half an item lies in the Trash itself, which its emptying takes.
void removeLeftovers() {}

}  // namespace Brimlo::Platform::TrashItem
