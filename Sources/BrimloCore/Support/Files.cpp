#include "BrimloCore/Support/Files.h"

#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Volume.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/Support/Uuid.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {

namespace {

using Platform::Descriptor;

constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::size_t kMarkLength = 8;

/// For more files, one sync of the volume is faster, even with the unsynced writes of others.
constexpr std::size_t kFewFiles = 16;

std::unexpected<Error> failure() {
    return std::unexpected(Error::fromSystem(errno));
}

std::string parentOf(const std::string& path) {
    return std::filesystem::path(path).parent_path().string();
}

void syncParent(const std::string& path) {
    const Descriptor folder{open(parentOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (folder) {
        Platform::syncFolder(folder.number());
    }
}

/// The name of the file that a temporary file was written for; empty for other names.
std::string_view origin(std::string_view name) {
    const std::size_t added = 1 + kMarkLength + kTemporarySuffix.size();
    if (name.size() <= added || !name.ends_with(kTemporarySuffix) ||
        name[name.size() - added] != '.') {
        return {};
    }
    return name.substr(0, name.size() - added);
}

struct OpenFile {
    Descriptor file;
    struct stat status{};
};

/// Opens a regular file for reading, without waiting for the other end of a pipe.
std::expected<OpenFile, Error> openRegular(const std::string& path, Owner owner) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    OpenFile opened{.file = Descriptor{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)}};
    const struct stat& status = opened.status;
    if (!opened.file || fstat(opened.file.number(), &opened.status) != 0) {
        return failure();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(Error::fromSystem(S_ISDIR(status.st_mode) ? EISDIR : EINVAL));
    }
    if (owner == Owner::trusted && status.st_uid != geteuid() && status.st_uid != 0) {
        return std::unexpected(Error::fromSystem(EPERM));
    }
    return opened;
}

/// Why a new file could not be made. Its folder is missing if `StoragePaths::support`, which does
/// not tell, could not make it.
std::unexpected<Error> notMade(const std::string& path) {
    auto error = failure();
    const std::string support = StoragePaths::expandTilde(StoragePaths::kSupport);
    if (error.error().code == ENOENT && Path::below(support, path)) {
        if (auto made = Folders::create(support, Folders::Access::ownerOnly); !made) {
            return std::unexpected(std::move(made.error()));
        }
    }
    return error;
}

}  // namespace

AtomicFile::AtomicFile(std::string path, std::string temporary)
    : path_(std::move(path))
    , temporary_(std::move(temporary)) {}

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : path_(std::move(other.path_))
    , temporary_(std::exchange(other.temporary_, {})) {}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

std::expected<AtomicFile, Error> AtomicFile::create(
    std::string path, std::string_view bytes, Write write) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    std::string temporary =
        path + "." + Uuid::random().text().substr(0, kMarkLength) + std::string{kTemporarySuffix};
    const Descriptor file{
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)};
    if (!file) {
        return notMade(path);
    }
    AtomicFile prepared{std::move(path), std::move(temporary)};
    if (!write(file.number(), bytes)) {
        return failure();
    }
    return prepared;
}

std::expected<AtomicFile, Error> AtomicFile::prepare(std::string path, std::string_view bytes) {
    return create(std::move(path), bytes, Platform::writeAndSync);
}

void AtomicFile::removeLeftovers(const std::string& path) {
    const std::string folder{Path::parent(path)};
    const std::string name{Path::name(path)};
    for (const std::string& each : Folders::names(folder).value_or(std::vector<std::string>{})) {
        if (origin(each) == name) {
            unlink(Path::join(folder, each).c_str());
        }
    }
}

void AtomicFile::removeLeftovers(const std::string& folder, std::string_view suffix) {
    for (const std::string& each : Folders::names(folder).value_or(std::vector<std::string>{})) {
        if (origin(each).ends_with(suffix)) {
            unlink(Path::join(folder, each).c_str());
        }
    }
}

std::expected<void, Error> AtomicFile::sync() const {
    const Descriptor file{open(temporary_.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW)};
    return file && Platform::syncFile(file.number()) ? std::expected<void, Error>{} : failure();
}

std::expected<void, Error> AtomicFile::moveIntoPlace() {
    if (rename(temporary_.c_str(), path_.c_str()) != 0) {
        return failure();
    }
    temporary_.clear();
    return {};
}

std::expected<void, Error> AtomicFile::publish() {
    auto moved = moveIntoPlace();
    if (moved) {
        syncParent(path_);
    }
    return moved;
}

std::expected<void, Error> AtomicFile::writeAll(const std::vector<NewFile>& files) {
    std::vector<AtomicFile> made;
    made.reserve(files.size());
    for (const auto& [path, bytes] : files) {
        auto file = create(path, bytes, Platform::writeBytes);
        if (!file) {
            return std::unexpected(std::move(file.error()));
        }
        made.push_back(*std::move(file));
    }
    std::expected<void, Error> done;
    if (files.size() <= kFewFiles || !Platform::syncVolume(parentOf(files.front().path))) {
        for (std::size_t i = 0; done && i < made.size(); ++i) {
            done = made[i].sync();
        }
    }
    for (std::size_t i = 0; done && i < made.size(); ++i) {
        done = made[i].moveIntoPlace();
    }
    if (!files.empty()) {
        syncParent(files.front().path);
    }
    return done;
}

std::expected<void, Error> AtomicFile::write(std::string path, std::string_view bytes) {
    auto prepared = prepare(std::move(path), bytes);
    return prepared ? prepared->publish() : std::unexpected(prepared.error());
}

std::expected<void, Error> checkReadable(const std::string& path, Owner owner) {
    const auto file = openRegular(path, owner);
    return file ? std::expected<void, Error>{} : std::unexpected(file.error());
}

std::expected<std::string, Error> readFile(
    const std::string& path, std::size_t limit, Owner owner) {
    const auto opened = openRegular(path, owner);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    const Descriptor& file = opened->file;
    const auto expected = static_cast<std::size_t>(opened->status.st_size);
    std::string bytes(std::min(expected, limit) + 1, '\0');
    std::size_t length = 0;
    while (length <= limit) {
        const ssize_t count = read(file.number(), bytes.data() + length, bytes.size() - length);
        if (count == 0) {
            bytes.resize(length);
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            return failure();
        }
        length += count < 0 ? 0 : static_cast<std::size_t>(count);
        if (length == bytes.size()) {
            bytes.resize(std::min(bytes.size() * 2, limit + 1));  // It grew, or reports no size.
        }
    }
    return std::unexpected(Error::fromSystem(EFBIG));
}

void preserveCorrupt(const std::string& path) {
    const std::string target = path + ".corrupt";
    std::error_code ignored;
    std::filesystem::remove(target, ignored);
    // A file that could not be removed is not ours, and keeps its mode.
    if (std::filesystem::copy_file(path, target, ignored)) {
        chmod(target.c_str(), 0600);
    }
}

FileLock::FileLock(const std::string& path)
    : file_(open((path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
    int result = -1;
    while (file_ && (result = flock(file_.number(), LOCK_EX)) != 0 && errno == EINTR) {
    }
    if (result == 0) {
        AtomicFile::removeLeftovers(path);
    } else {
        file_ = Platform::Descriptor{};
    }
}

std::string FileLock::note() const {
    std::array<char, 512> text{};
    const ssize_t length = file_ ? pread(file_.number(), text.data(), text.size(), 0) : 0;
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

void FileLock::setNote(std::string_view note) const {
    if (file_ && ftruncate(file_.number(), 0) == 0) {
        // Cut short, the note says nothing true of any file.
        const ssize_t length = pwrite(file_.number(), note.data(), note.size(), 0);
        static_cast<void>(length);
    }
}

}  // namespace Brimlo

namespace Brimlo::Folders {

namespace {

bool isFolder(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::expected<void, Error> create(const std::string& path, Access access) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    // From the top down, so that a deep chain costs no recursion.
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (mkdir(folder.c_str(), access == Access::ownerOnly ? 0700 : 0777) != 0) {
            const int reason = errno;
            if (!isFolder(folder)) {
                return std::unexpected(Error::fromSystem(reason == EEXIST ? ENOTDIR : reason));
            }
        }
        if (end == std::string::npos) {
            return {};
        }
    }
}

std::expected<std::vector<std::string>, Error> names(const std::string& path) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    const Platform::Descriptor folder{open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    std::vector<std::string> names;
    const auto add = [&](const Platform::DirectoryEntry& entry) { names.emplace_back(entry.name); };
    if (!folder || !Platform::readDirectory(folder.number(), Platform::EntryDetail::kind, add)) {
        return std::unexpected(Error::fromSystem(errno));
    }
    return names;
}

}  // namespace Brimlo::Folders
