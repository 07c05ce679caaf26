#include "BrimloCore/Platform/TrashItem.h"

#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCore/Platform/macOS/Cocoa.h"

#include <cerrno>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform::TrashItem {

namespace {

std::unexpected<Error> failure(int code = errno) {
    return std::unexpected(Error::fromSystem(code));
}

/// The folder of an entry, and its name there.
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

/// Moves an item without overwriting. The permissions of a folder can forbid that to all but root.
bool moveWithout(int from, const std::string& name, int to, const std::string& newName) {
    const auto move = [&] {
        return renameatx_np(from, name.c_str(), to, newName.c_str(), RENAME_EXCL) == 0;
    };
    return move() || (errno == EACCES && makeWritable(from, name) && move());
}

/// For volumes without RENAME_EXCL: Foundation checks for an existing item before the move. It
/// would copy to another volume, hence the test.
std::expected<void, Error> moveByFoundation(
    const Place& from, const std::string& path, const Place& to, const std::string& newPath) {
    if (mountID(from.folder->number()) != mountID(to.folder->number())) {
        return failure(EXDEV);
    }
    @autoreleasepool {
        struct stat status{};
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

/// Only the Finder knows where an item was, and when it came.
Listing list() {
    Listing listing;
    std::vector<std::string> folders{homeTrash()};
    std::error_code error;
    for (const auto& volume : std::filesystem::directory_iterator{"/Volumes", error}) {
        folders.push_back(volume.path() / ".Trashes" / std::to_string(getuid()));
    }
    for (const std::string& folder : folders) {
        std::filesystem::directory_iterator entries{folder, error};
        if (error && error.value() != ENOENT) {
            listing.closed.emplace_back(folder, Error::fromSystem(error.value()));
        }
        for (const auto& entry : entries) {
            const auto identity = FileIdentity::of(entry.path());
            if (identity && entry.path().filename() != ".DS_Store") {
                listing.items.push_back(
                    {.trashPath = entry.path(), .identity = *identity, .path = {}, .date = {}});
            }
        }
    }
    return listing;
}

std::expected<FileIdentity, Error> find(
    const std::string& trashPath,
    const std::string& /*entryID*/,
    const std::optional<std::string>& recorded) {
    if (trashPath.contains('\0') || !isInATrash(trashPath)) {
        return failure(ENOENT);
    }
    struct stat status{};
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
    // The user's path to the folder may contain symlinks.
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
    struct stat status{};
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
    return {};
}

void settle(const std::vector<Returned>& returned) {
    std::set<std::string> targets;
    std::set<std::string> trashes;
    for (const auto& [trashPath, path] : returned) {
        targets.insert(path.substr(0, path.rfind('/') + 1));
        trashes.insert(trashPath.substr(0, trashPath.rfind('/') + 1));
    }
    for (const auto* folders : {&targets, &trashes}) {
        for (const std::string& folder : *folders) {
            const Descriptor open{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
            syncFolder(open.number());
        }
    }
}

std::expected<void, Error> remove(const std::string& trashPath, const FileIdentity& identity) {
    const Place trash{trashPath};
    if (!trash.folder) {
        return std::unexpected(trash.folder.error());
    }
    const int folder = trash.folder->number();
    // Under a unique name the item that was checked is the one deleted.
    const std::string aside = ".brimlo-" + std::to_string(getpid()) + "-" + identity.text();
    // The longer name can fail on a full disk.
    const bool isAside = moveWithout(folder, trash.name, folder, aside);
    auto removed = removeTree(folder, isAside ? aside : trash.name, identity);
    if (!removed && isAside) {
        moveWithout(folder, aside, folder, trash.name);
    }
    return removed;
}

/// macOS has no trashinfo files, and half-deleted items stay in the Trash until it is emptied.
void removeLeftovers() {}

}  // namespace Brimlo::Platform::TrashItem
