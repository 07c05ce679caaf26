#include "BrimloCore/Platform/TrashItem.h"

#include "BrimloCore/Platform/Linux/TrashInfo.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/FolderAccess.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"
#include "BrimloCore/Platform/Posix/RemoveTree.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>

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

    void removeNote() const { unlinkat(info.number(), note().c_str(), 0); }

    /// The folder beside "files" in which other programs too put what is being deleted.
    [[nodiscard]] Descriptor openExpunged() const {
        mkdirat(trash.number(), "expunged", 0700);
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

}  // namespace

std::optional<std::string> entryID(const std::string& trashPath) {
    const Place place{trashPath};
    const Descriptor note{openat(
        place.info.number(), place.note().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
    std::array<char, 16384> text{};  // A path of 4,096 bytes is three times as long when encoded.
    const ssize_t length = note ? read(note.number(), text.data(), text.size()) : -1;
    if (length <= 0) {
        return std::nullopt;
    }
    const auto info = TrashInfo::parse({text.data(), static_cast<std::size_t>(length)});
    return info ? info->entryID : std::nullopt;
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
    fsync(target.number());
    fsync(files);
    place.removeNote();
    return {};
}

std::expected<void, Error> remove(const std::string& trashPath, const FileIdentity& identity) {
    const Place place{trashPath};
    const int files = place.files.number();
    const Descriptor expunged = place.files ? place.openExpunged() : Descriptor{};
    if (!expunged) {
        return failure();
    }
    // Under a name that nobody else uses, what was looked at is what is deleted.
    const std::string aside = "brimlo-" + std::to_string(getpid()) + "-" + identity.text();
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
