#include "BrimloCore/Platform/Linux/TrashFolder.h"

#include "BrimloCore/Platform/Linux/DataFolders.h"
#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Posix/FolderAccess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

constexpr int kOpenFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

std::unexpected<Error> failure(std::string phrase) {
    Error error = Error::fromSystem(errno);
    error.description = std::move(phrase) + " (" + error.description + ")";
    return std::unexpected(std::move(error));
}

std::unexpected<Error> unsafe(const std::string& name) {
    return std::unexpected(Error{
        .domain = kSystemErrorDomain,
        .code = EPERM,
        .description = "the Trash folder \"" + name +
                       "\" is a link, belongs to somebody else or may be changed by others",
    });
}

bool isPrivate(const struct stat& status) {
    const bool othersWrite = (status.st_mode & S_IWOTH) != 0;
    // A group of the user's own keeps nobody in.
    const bool groupWrites = (status.st_mode & S_IWGRP) != 0 && status.st_gid != getegid();
    return status.st_uid == geteuid() && !othersWrite && !groupWrites;
}

/// Opens a folder of the Trash inside `parent`, and makes it first when it is missing.
std::expected<Descriptor, Error> openPrivate(int parent, const std::string& name) {
    const bool isMissing = mkdirat(parent, name.c_str(), 0700) != 0 && errno != EEXIST;
    const int reason = errno;
    Descriptor folder{openat(parent, name.c_str(), kOpenFlags)};
    struct stat status {};
    if (folder && fstat(folder.number(), &status) == 0) {
        if (isPrivate(status)) {
            return folder;
        }
        return unsafe(name);
    }
    if (errno == ELOOP || errno == ENOTDIR) {
        return unsafe(name);
    }
    errno = isMissing ? reason : errno;
    return failure("the Trash folder \"" + name + "\" could not be opened");
}

std::expected<TrashFolder, Error> openTrash(
    const Descriptor& folder, std::string path, std::string base) {
    auto files = openPrivate(folder.number(), "files");
    auto info = files ? openPrivate(folder.number(), "info") : std::unexpected(files.error());
    if (!info) {
        return std::unexpected(info.error());
    }
    return TrashFolder{
        .path = std::move(path),
        .base = std::move(base),
        .files = *std::move(files),
        .info = *std::move(info),
    };
}

std::expected<TrashFolder, Error> openHomeTrash() {
    const std::string home = dataHome();
    std::error_code error;
    std::filesystem::create_directories(home, error);
    const Descriptor parent{open(home.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!parent) {
        return failure("the folder of the Trash could not be opened");
    }
    auto folder = openPrivate(parent.number(), "Trash");
    if (!folder) {
        return std::unexpected(folder.error());
    }
    return openTrash(*folder, home + "/Trash", "");
}

/// `$topdir/.Trash/$uid` where an administrator has set `.Trash` up, else `$topdir/.Trash-$uid`.
std::expected<TrashFolder, Error> openTopTrash(const std::string& top) {
    const Descriptor topFolder{open(top.c_str(), kOpenFlags)};
    if (!topFolder) {
        return failure("the top folder of its volume could not be opened");
    }
    const std::string base = top == "/" ? "" : top;
    const std::string user = std::to_string(getuid());
    const Descriptor shared{openat(topFolder.number(), ".Trash", kOpenFlags)};
    struct stat status {};
    if (shared && fstat(shared.number(), &status) == 0 && (status.st_mode & S_ISVTX) != 0) {
        if (auto folder = openPrivate(shared.number(), user)) {
            return openTrash(*folder, base + "/.Trash/" + user, top);
        }
    }
    auto folder = openPrivate(topFolder.number(), ".Trash-" + user);
    if (!folder) {
        return std::unexpected(folder.error());
    }
    return openTrash(*folder, base + "/.Trash-" + user, top);
}

/// The mount of the home Trash, or of the first folder above it that exists.
std::uint64_t homeTrashMount() {
    for (std::filesystem::path folder = dataHome() + "/Trash/files";;
         folder = folder.parent_path()) {
        const Descriptor open{::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
        if (open || folder == "/") {
            return open ? mountID(open.number()) : 0;
        }
    }
}

}  // namespace

std::expected<TrashFolder, Error> TrashFolder::forItemsIn(int folder, std::string_view folderPath) {
    const std::uint64_t mount = mountID(folder);
    if (mount == homeTrashMount()) {
        return openHomeTrash();
    }
    const std::optional<std::string> top = MountTable::read().mountPoint(mount);
    if (!top || !folderPath.starts_with(*top)) {
        errno = ENOENT;
        return failure("the top folder of its volume could not be found");
    }
    return openTopTrash(*top);
}

bool TrashFolder::holds(int folder) const {
    struct stat wanted {};
    const bool isKnown = fstat(folder, &wanted) == 0;
    return isKnown && std::ranges::any_of(std::array{".", "..", "../info"}, [&](const char* name) {
               struct stat status {};
               return fstatat(files.number(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                      status.st_dev == wanted.st_dev && status.st_ino == wanted.st_ino;
           });
}

}  // namespace Brimlo::Platform
