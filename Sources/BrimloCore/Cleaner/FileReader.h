#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Sha256.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace Brimlo {

/// Reads files and computes their digests, with one buffer for all.
class FileReader {
public:
    using Bytes = std::span<const std::byte>;

    /// Bytes read at once, and at each end of a file.
    static constexpr std::int64_t kChunkBytes = 4'194'304;
    static constexpr std::int64_t kEdgeBytes = 65'536;

    /// Reads until the control is cancelled, which may be null.
    explicit FileReader(const ScanControl* control = nullptr)
        : control_{control} {}

    /// Opens only a regular file, by its name in the open folder `folder` or by its whole path: a
    /// pipe, a device or a symlink may have replaced it since it was found.
    [[nodiscard]] static Platform::Descriptor open(int folder, const std::string& name);
    [[nodiscard]] static Platform::Descriptor open(const std::string& path);

    [[nodiscard]] bool isCancelled() const {
        return control_ != nullptr && control_->isCancelled();
    }

    /// Up to `count` bytes, at most a chunk, and fewer only at the end; nullopt when reading
    /// failed. Valid until the next call.
    [[nodiscard]] std::optional<Bytes> read(
        const Platform::Descriptor& file, std::int64_t count, std::int64_t offset);

    /// The digest of the beginning, and of the end where the two do not meet; nullopt when nothing
    /// can be read.
    [[nodiscard]] std::optional<Sha256::Digest> digestOfEdges(const std::string& path);

    /// The digest of all readable bytes; nullopt when the file can't be opened, when it is longer
    /// than `size` by now, since one that keeps growing might never end, and when cancelled.
    [[nodiscard]] std::optional<Sha256::Digest> digest(const std::string& path, std::int64_t size);

private:
    /// Aligned to a page: elsewhere the kernel copies at a third of the speed.
    struct alignas(4096) Buffer {
        std::array<std::byte, kChunkBytes> bytes;
    };

    const ScanControl* control_;
    std::unique_ptr<Buffer> buffer_ = std::make_unique_for_overwrite<Buffer>();
    Sha256 sha256_;
};

}  // namespace Brimlo
