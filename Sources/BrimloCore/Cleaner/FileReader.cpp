#include "BrimloCore/Cleaner/FileReader.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {

Platform::Descriptor FileReader::open(int folder, const std::string& name) {
    constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    Platform::Descriptor file{openat(folder, name.c_str(), kFlags)};
    struct stat status{};
    const bool isFile = file && fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile ? std::move(file) : Platform::Descriptor{};
}

Platform::Descriptor FileReader::open(const std::string& path) {
    return open(AT_FDCWD, path);
}

std::optional<FileReader::Bytes> FileReader::read(
    const Platform::Descriptor& file, std::int64_t count, std::int64_t offset) {
    std::int64_t length = 0;
    while (length < count) {
        const ssize_t more = pread(
            file.number(),
            buffer_->bytes.data() + length,
            static_cast<std::size_t>(count - length),
            offset + length);
        if (more == 0) {
            break;
        }
        if (more < 0 && errno != EINTR) {
            return std::nullopt;
        }
        length += std::max<ssize_t>(more, 0);
    }
    return Bytes{buffer_->bytes}.first(static_cast<std::size_t>(length));
}

std::optional<Sha256::Digest> FileReader::digestOfEdges(const std::string& path) {
    const Platform::Descriptor file = open(path);
    const auto beginning = read(file, kEdgeBytes, 0);
    if (!beginning || beginning->empty()) {
        return std::nullopt;
    }
    sha256_.update(*beginning);
    struct stat status{};
    if (fstat(file.number(), &status) == 0 && status.st_size > 2 * kEdgeBytes) {
        sha256_.update(read(file, kEdgeBytes, status.st_size - kEdgeBytes).value_or(Bytes{}));
    }
    return sha256_.finish();
}

std::optional<Sha256::Digest> FileReader::digest(const std::string& path, std::int64_t size) {
    const Platform::Descriptor file = open(path);
    if (!file) {
        return std::nullopt;
    }
    std::int64_t offset = 0;
    while (offset <= size && !isCancelled()) {
        const auto bytes = read(file, kChunkBytes, offset);
        if (!bytes || bytes->empty()) {
            return sha256_.finish();
        }
        sha256_.update(*bytes);
        offset += std::ssize(*bytes);
    }
    static_cast<void>(sha256_.finish());
    return std::nullopt;
}

}  // namespace Brimlo
