#include "BrimloCore/Platform/Posix/Folders.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Posix/Stat.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

#ifdef O_PATH
constexpr int kSearchOnly = O_PATH;
#else
constexpr int kSearchOnly = O_SEARCH;
#endif

constexpr int kSearchFlags = kSearchOnly | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int kReadFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

Descriptor walkTo(std::string_view path) {
    Descriptor folder{open("/", kSearchFlags)};
    while (folder && !path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string component{path.substr(0, end)};
        path.remove_prefix(std::min(end + 1, path.size()));
        if (!component.empty()) {
            folder = Descriptor{openat(folder.number(), component.c_str(), kSearchFlags)};
        }
    }
    return folder;
}

/// A folder on the way down, with the folders still to delete in it, and its identity to compare
/// when the walk comes back to it.
struct Level {
    std::string name;  ///< In the level above.
    FileIdentity identity;
    std::vector<std::string> folders;
};

std::unexpected<Error> failure() {
    return std::unexpected(Error::fromSystem(errno));
}

/// Opens a folder for reading, widening its permissions if necessary.
Descriptor openForRemoval(int parent, const std::string& name) {
    Descriptor folder{openat(parent, name.c_str(), kReadFlags)};
    if (!folder && errno == EACCES && makeWritable(parent, name)) {
        folder = Descriptor{openat(parent, name.c_str(), kReadFlags)};
    }
    return folder;
}

/// Walks down a tree and deletes it on the way up, one open folder at a time.
class Removal {
public:
    explicit Removal(int parent)
        : parent_(parent)
        , mount_(mountID(parent)) {}

    std::expected<void, Error> run(const std::string& name, const FileIdentity& identity) {
        auto result = enter(parent_, name, &identity);
        while (result && !levels_.empty()) {
            std::vector<std::string>& folders = levels_.back().folders;
            if (folders.empty()) {
                result = leave();
            } else {
                const std::string next = std::move(folders.back());
                folders.pop_back();
                result = enter(folder_.number(), next, nullptr);
            }
        }
        return result;
    }

private:
    /// Opens a folder, deletes its entries except for folders, and adds a level for those. Any
    /// folder of that name will do when `expected` is null.
    std::expected<void, Error> enter(
        int parent, const std::string& name, const FileIdentity* expected) {
        Descriptor folder = openForRemoval(parent, name);
        struct stat status{};
        if (!folder || fstat(folder.number(), &status) != 0) {
            return failure();
        }
        if (expected != nullptr && identityOf(status) != *expected) {
            errno = ESTALE;
            return failure();
        }
        if (mountID(folder.number()) != mount_) {
            errno = EBUSY;
            return failure();
        }
        Level level{.name = name, .identity = identityOf(status), .folders = {}};
        std::vector<std::string> others;
        if (!readDirectory(folder.number(), EntryDetail::kind, [&](const DirectoryEntry& entry) {
                (entry.isDirectory ? level.folders : others).emplace_back(entry.name);
            })) {
            return failure();
        }
        if ((status.st_mode & S_IRWXU) != S_IRWXU && !(level.folders.empty() && others.empty())) {
            fchmod(folder.number(), S_IRWXU);
        }
        for (const std::string& other : others) {
            if (unlinkat(folder.number(), other.c_str(), 0) != 0 && errno != ENOENT) {
                return failure();
            }
        }
        levels_.push_back(std::move(level));
        folder_ = std::move(folder);
        return {};
    }

    /// Goes back to the folder above and deletes the emptied one.
    std::expected<void, Error> leave() {
        const Level done = std::move(levels_.back());
        levels_.pop_back();
        int above = parent_;
        if (!levels_.empty()) {
            folder_ = Descriptor{openat(folder_.number(), "..", kReadFlags)};
            above = folder_.number();
            struct stat status{};
            if (!folder_ || fstat(above, &status) != 0) {
                return failure();
            }
            if (levels_.back().identity != identityOf(status)) {
                errno = ESTALE;  // The tree was moved while it was being deleted.
                return failure();
            }
        }
        if (unlinkat(above, done.name.c_str(), AT_REMOVEDIR) != 0) {
            return failure();
        }
        return {};
    }

    int parent_;
    std::uint64_t mount_;
    Descriptor folder_;  ///< The folder of the last level.
    std::vector<Level> levels_;
};

}  // namespace

std::expected<Descriptor, Error> openFolder(std::string_view path) {
    Descriptor folder = walkTo(path);
    const int reason = errno;
#ifdef __APPLE__
    // /etc, /tmp and /var are symlinks to the same names in /private.
    if (!folder) {
        folder = walkTo("/private" + std::string{path});
    }
#endif
    if (!folder) {
        return std::unexpected(Error::fromSystem(reason));
    }
    return folder;
}

std::expected<void, Error> removeTree(
    int parent, const std::string& name, const FileIdentity& identity) {
    struct stat status{};
    if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return failure();
    }
    if (S_ISDIR(status.st_mode)) {
        return Removal{parent}.run(name, identity);
    }
    if (identityOf(status) != identity) {
        errno = ESTALE;
        return failure();
    }
    if (unlinkat(parent, name.c_str(), 0) != 0) {
        return failure();
    }
    return {};
}

std::string reasonNotMoved(int code) {
    switch (code) {
        case EXDEV:
            return "it lies on another volume or layer than its Trash, and nothing is copied there";
        case EACCES:
        case EPERM:
            return "no permission to move it";
        case EROFS:
            return "its volume can't be written to";
        case ENOSPC:
        case EDQUOT:
            return "the disk is too full to move it to the Trash";
        case ENOENT:
            return "no longer exists";
        case EBUSY:
            return "it is in use by the system";
        case EINVAL:
            return "its file system can't move it without the danger of overwriting";
        case ELOOP:
        case ENOTDIR:
            return "the folder around it changed meanwhile";
        default: {
            std::string words = Error::fromSystem(code).description;
            words.front() =
                static_cast<char>(std::tolower(static_cast<unsigned char>(words.front())));
            return words;
        }
    }
}

}  // namespace Brimlo::Platform
