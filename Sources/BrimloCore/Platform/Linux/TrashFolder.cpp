#include "BrimloCore/Platform/Linux/TrashFolder.h"

#include "BrimloCore/Platform/Linux/MountTable.h"
#include "BrimloCore/Platform/Linux/UserFolders.h"
#include "BrimloCore/Platform/Posix/Folders.h"
#include "BrimloCore/Platform/Posix/Stat.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo::Platform {

namespace {

namespace fs = std::filesystem;

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

/// Whether the user is the only member of a group: it has the user's name and no other member.
bool isOfTheUserAlone(gid_t id) {
    std::array<char, 16384> userText{};
    std::array<char, 16384> groupText{};
    passwd user{};
    group ofUser{};
    passwd* foundUser = nullptr;
    group* foundGroup = nullptr;
    getpwuid_r(geteuid(), &user, userText.data(), userText.size(), &foundUser);
    getgrgid_r(id, &ofUser, groupText.data(), groupText.size(), &foundGroup);
    if (foundUser == nullptr || foundGroup == nullptr) {
        return false;
    }
    const std::string_view name = user.pw_name;
    bool isAlone = name == ofUser.gr_name;
    for (char** member = ofUser.gr_mem; *member != nullptr; ++member) {
        isAlone = isAlone && name == *member;
    }
    return isAlone;
}

/// Whether nobody but the user can change a folder that lies in one with the mode `enclosing`.
bool isPrivate(const struct stat& status, mode_t enclosing) {
    if (status.st_uid != geteuid()) {
        return false;
    }
    constexpr mode_t kOthers = S_IRWXG | S_IRWXO;
    if ((enclosing & kOthers) == 0) {
        return true;
    }
    const bool groupWrites = (status.st_mode & S_IWGRP) != 0 && !isOfTheUserAlone(status.st_gid);
    return (status.st_mode & S_IWOTH) == 0 && !groupWrites;
}

/// What to do about a missing folder of the Trash.
enum class Missing { made, left };

/// Opens a folder of the Trash inside `parent`.
std::expected<Descriptor, Error> openPrivate(int parent, const std::string& name, Missing missing) {
    int reason = 0;
    if (missing == Missing::made && mkdirat(parent, name.c_str(), 0700) != 0 && errno != EEXIST) {
        reason = errno;
    }
    Descriptor folder{openat(parent, name.c_str(), kOpenFlags)};
    struct stat status{};
    struct stat around{};
    if (folder && fstat(folder.number(), &status) == 0 && fstat(parent, &around) == 0) {
        if (isPrivate(status, around.st_uid == geteuid() ? around.st_mode : 0777)) {
            return folder;
        }
        return unsafe(name);
    }
    if (errno == ELOOP || errno == ENOTDIR) {
        return unsafe(name);
    }
    errno = reason != 0 ? reason : errno;
    return failure("the Trash folder \"" + name + "\" could not be opened");
}

std::expected<TrashFolder, Error> openTrash(
    const Descriptor& folder, std::string path, std::string base, Missing missing) {
    auto files = openPrivate(folder.number(), "files", missing);
    auto info =
        files ? openPrivate(folder.number(), "info", missing) : std::unexpected(files.error());
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

std::expected<TrashFolder, Error> openHomeTrash(Missing missing) {
    const std::string home = dataHome();
    if (missing == Missing::made) {
        std::error_code error;
        fs::create_directories(home, error);
    }
    const Descriptor parent{open(home.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!parent) {
        return failure("the folder of the Trash could not be opened");
    }
    auto folder = openPrivate(parent.number(), "Trash", missing);
    if (!folder) {
        return std::unexpected(folder.error());
    }
    return openTrash(*folder, home + "/Trash", "", missing);
}

/// `$topdir/.Trash/$uid` where an administrator has created `.Trash`, else `$topdir/.Trash-$uid`.
std::expected<TrashFolder, Error> openTopTrash(const std::string& top) {
    const Descriptor topFolder{open(top.c_str(), kOpenFlags)};
    if (!topFolder) {
        return failure("the top folder of its volume could not be opened");
    }
    const std::string base = top == "/" ? "" : top;
    const std::string user = std::to_string(getuid());
    const Descriptor shared{openat(topFolder.number(), ".Trash", kOpenFlags)};
    struct stat status{};
    // The owner of a folder can rename its entries, whatever its mode.
    const bool isTrusted = shared && fstat(shared.number(), &status) == 0 &&
                           (status.st_uid == 0 || status.st_uid == geteuid()) &&
                           (status.st_mode & S_ISVTX) != 0;
    if (isTrusted) {
        if (auto folder = openPrivate(shared.number(), user, Missing::made)) {
            return openTrash(*folder, base + "/.Trash/" + user, top, Missing::made);
        }
    }
    auto folder = openPrivate(topFolder.number(), ".Trash-" + user, Missing::made);
    if (!folder) {
        return std::unexpected(folder.error());
    }
    return openTrash(*folder, base + "/.Trash-" + user, top, Missing::made);
}

/// The top folder of the volume whose Trash for this user has this path; nullopt when the path is
/// not that of such a Trash.
std::optional<fs::path> topOf(const fs::path& trash) {
    const std::string user = std::to_string(getuid());
    if (trash.filename() == ".Trash-" + user) {
        return trash.parent_path();
    }
    const bool isShared = trash.filename() == user && trash.parent_path().filename() == ".Trash";
    return isShared ? std::optional{trash.parent_path().parent_path()} : std::nullopt;
}

/// The mount of the home Trash, or of the first folder above it that exists.
std::uint64_t homeTrashMount() {
    for (fs::path folder = dataHome() + "/Trash/files";; folder = folder.parent_path()) {
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
        return openHomeTrash(Missing::made);
    }
    const std::optional<std::string> top = MountTable::read().mountPoint(mount);
    if (!top || !folderPath.starts_with(*top)) {
        errno = ENOENT;
        return failure("the top folder of its volume could not be found");
    }
    return openTopTrash(*top);
}

std::expected<TrashFolder, Error> TrashFolder::home() {
    return openHomeTrash(Missing::left);
}

std::expected<TrashFolder, Error> TrashFolder::holding(const std::string& itemPath) {
    const auto noTrash = [] { return std::unexpected(Error::fromSystem(ENOENT)); };
    const fs::path path{itemPath};
    const fs::path trash = path.parent_path().parent_path();
    if (itemPath.contains('\0') || !path.is_absolute() || !path.has_filename() ||
        path.lexically_normal() != path || path.parent_path().filename() != "files") {
        return noTrash();
    }
    struct stat status{};
    const bool isThere = lstat(trash.c_str(), &status) == 0;
    if (const auto top = topOf(trash)) {
        const Descriptor folder{open(trash.c_str(), kOpenFlags)};
        if (!folder) {
            return std::unexpected(Error{
                .domain = kSystemErrorDomain,
                .code = ENXIO,
                .description = "the Trash of its volume is not there",
            });
        }
        if (MountTable::read().mountPoint(mountID(folder.number())) != top->string()) {
            return noTrash();
        }
        return openTrash(folder, trash, *top, Missing::left);
    }
    // The home folder may have been spelled differently at the time, so compare the folders.
    auto home = openHomeTrash(Missing::left);
    struct stat ours{};
    if (home && isThere && fstatat(home->files.number(), "..", &ours, 0) == 0 &&
        identityOf(ours) != identityOf(status)) {
        return noTrash();
    }
    return isThere ? std::move(home) : noTrash();
}

bool TrashFolder::holds(int folder) const {
    struct stat wanted{};
    const bool isKnown = fstat(folder, &wanted) == 0;
    return isKnown && std::ranges::any_of(std::array{".", "..", "../info"}, [&](const char* name) {
               struct stat status{};
               return fstatat(files.number(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                      identityOf(status) == identityOf(wanted);
           });
}

}  // namespace Brimlo::Platform
