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

std::optional<std::size_t> FileReader::fill(
    std::span<std::byte> buffer, const Platform::Descriptor& file, std::int64_t offset) {
    std::size_t length = 0;
    while (length < buffer.size()) {
        const ssize_t more = pread(
            file.number(),
            buffer.data() + length,
            buffer.size() - length,
            offset + static_cast<std::int64_t>(length));
        if (more == 0) {
            break;
        }
        if (more < 0 && errno != EINTR) {
            return std::nullopt;
        }
        length += static_cast<std::size_t>(std::max<ssize_t>(more, 0));
    }
    return length;
}

bool FileReader::holdTheSame(
    std::array<FileReader, 2>& readers,
    const Platform::Descriptor& one,
    const Platform::Descriptor& other,
    const std::function<bool()>& goesOn) {
    for (std::int64_t offset = 0; goesOn(); offset += kChunkBytes) {
        const auto mine = readers[0].read(one, offset);
        const auto its = readers[1].read(other, offset);
        if (!mine || !its || !areEqual(*mine, *its)) {
            return false;
        }
        if (std::ssize(*mine) < kChunkBytes) {
            return true;
        }
    }
    return false;
}

std::optional<FileReader::Bytes> FileReader::read(
    const Platform::Descriptor& file, std::int64_t offset) {
    const auto length = fill(buffer_->bytes, file, offset);
    return length ? std::optional{Bytes{buffer_->bytes}.first(*length)} : std::nullopt;
}

}  // namespace Brimlo
