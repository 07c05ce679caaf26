#include "BrimloCore/Support/AtomicFile.h"

#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Posix/WriteAndSync.h"
#include "BrimloCore/Support/Folders.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/Uuid.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {

namespace {

using Platform::Descriptor;

constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::size_t kMarkLength = 8;

std::unexpected<Error> failure() {
    return std::unexpected(Error::fromSystem(errno));
}

void syncFolder(const std::string& path) {
    const Descriptor folder{open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (folder) {
        fsync(folder.number());
    }
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

std::expected<AtomicFile, Error> AtomicFile::prepare(std::string path, std::string_view bytes) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    std::string temporary =
        path + "." + Uuid::random().text().substr(0, kMarkLength) + std::string{kTemporarySuffix};
    const Descriptor file{
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600)};
    if (!file) {
        return failure();
    }
    AtomicFile prepared{std::move(path), std::move(temporary)};
    if (!Platform::writeAndSync(file.number(), bytes)) {
        return failure();
    }
    return prepared;
}

void AtomicFile::removeLeftovers(const std::string& path) {
    const std::string folder{Path::parent(path)};
    const std::string beginning = std::string{Path::name(path)} + ".";
    for (const std::string& name : Folders::names(folder).value_or(std::vector<std::string>{})) {
        if (name.size() == beginning.size() + kMarkLength + kTemporarySuffix.size() &&
            name.starts_with(beginning) && name.ends_with(kTemporarySuffix)) {
            unlink(Path::join(folder, name).c_str());
        }
    }
}

std::expected<void, Error> AtomicFile::publish() {
    if (rename(temporary_.c_str(), path_.c_str()) != 0) {
        return failure();
    }
    temporary_.clear();
    syncFolder(std::filesystem::path(path_).parent_path().string());
    return {};
}

std::expected<void, Error> AtomicFile::write(std::string path, std::string_view bytes) {
    auto prepared = prepare(std::move(path), bytes);
    return prepared ? prepared->publish() : std::unexpected(prepared.error());
}

std::expected<std::string, Error> readFile(
    const std::string& path, std::size_t limit, Owner owner) {
    if (!Path::isUsable(path)) {
        return std::unexpected(Error::fromSystem(EINVAL));
    }
    const Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    struct stat status {};
    if (!file || fstat(file.number(), &status) != 0) {
        return failure();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(Error::fromSystem(S_ISDIR(status.st_mode) ? EISDIR : EINVAL));
    }
    if (owner == Owner::trusted && status.st_uid != geteuid() && status.st_uid != 0) {
        return std::unexpected(Error::fromSystem(EPERM));
    }
    const auto expected = static_cast<std::size_t>(status.st_size);
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
            bytes.resize(std::min(bytes.size() * 2, limit + 1));  // It grew, or tells no size.
        }
    }
    return std::unexpected(Error::fromSystem(EFBIG));
}

void preserveCorrupt(const std::string& path) {
    const std::string target = path + ".corrupt";
    std::error_code ignored;
    std::filesystem::remove(target, ignored);
    // What could not be removed is not the program's, and keeps its mode.
    if (std::filesystem::copy_file(path, target, ignored)) {
        chmod(target.c_str(), 0600);
    }
}

}  // namespace Brimlo
