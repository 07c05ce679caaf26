#include "BrimloCore/Platform/Posix/RemoveTree.h"

#include "BrimloCore/Platform/DirectoryReader.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/FolderAccess.h"
#include "BrimloCore/Platform/Posix/IdentityOf.h"

#include <cerrno>
#include <cstdint>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

constexpr int kOpenFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// A folder on the way down: what is left to delete in it, and what it must still be when the
/// walk comes back to it.
struct Level {
    std::string name;  ///< In the level above.
    FileIdentity identity;
    std::vector<std::string> folders;
};

std::unexpected<Error> failure() {
    return std::unexpected(Error::fromSystem(errno));
}

/// Opens a folder for reading, with its permissions widened when that is what it takes.
Descriptor openForRemoval(int parent, const std::string& name) {
    Descriptor folder{openat(parent, name.c_str(), kOpenFlags)};
    if (!folder && errno == EACCES && makeWritable(parent, name)) {
        folder = Descriptor{openat(parent, name.c_str(), kOpenFlags)};
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
    /// Opens a folder and deletes all in it but its folders, which it notes. `expected` is null for
    /// whatever folder has the name.
    std::expected<void, Error> enter(
        int parent, const std::string& name, const FileIdentity* expected) {
        Descriptor folder = openForRemoval(parent, name);
        struct stat status {};
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

    /// Goes back to the folder above and deletes the one that has been emptied.
    std::expected<void, Error> leave() {
        const Level done = std::move(levels_.back());
        levels_.pop_back();
        int above = parent_;
        if (!levels_.empty()) {
            folder_ = Descriptor{openat(folder_.number(), "..", kOpenFlags)};
            above = folder_.number();
            struct stat status {};
            if (!folder_ || fstat(above, &status) != 0) {
                return failure();
            }
            if (levels_.back().identity != identityOf(status)) {
                errno = ESTALE;  // Somebody moved the tree while it was being deleted.
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

std::expected<void, Error> removeTree(
    int parent, const std::string& name, const FileIdentity& identity) {
    struct stat status {};
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

}  // namespace Brimlo::Platform
