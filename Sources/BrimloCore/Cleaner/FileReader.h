#pragma once

#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace Brimlo {

/// Reads files, with one buffer for all.
class FileReader {
public:
    using Bytes = std::span<const std::byte>;

    /// Bytes read at once.
    static constexpr std::int64_t kChunkBytes = 4'194'304;
    /// Where a buffer starts in a page: elsewhere the kernel copies at a third of the speed.
    static constexpr std::size_t kAlignment = 4096;

    /// Reads until the control is cancelled, which may be null.
    explicit FileReader(const ScanControl* control = nullptr)
        : control_{control} {}

    /// Opens only a regular file, by its name in the open folder `folder` or by its whole path: a
    /// pipe, a device or a symlink may have replaced it since it was found.
    [[nodiscard]] static Platform::Descriptor open(int folder, const std::string& name);
    [[nodiscard]] static Platform::Descriptor open(const std::string& path);

    /// Fills `buffer` from `offset` on; how many bytes there were, fewer only at the end; nullopt
    /// when reading failed.
    [[nodiscard]] static std::optional<std::size_t> fill(
        std::span<std::byte> buffer, const Platform::Descriptor& file, std::int64_t offset);

    /// Whether the bytes are the same. Many times as fast as `std::ranges::equal`.
    [[nodiscard]] static bool areEqual(Bytes one, Bytes other) {
        return one.size() == other.size() && std::memcmp(one.data(), other.data(), one.size()) == 0;
    }

    /// Whether both files can be read to their ends and hold the same bytes. `goesOn` is asked
    /// before each chunk; a no ends the comparison, and the files count as different.
    [[nodiscard]] static bool holdTheSame(
        std::array<FileReader, 2>& readers,
        const Platform::Descriptor& one,
        const Platform::Descriptor& other,
        const std::function<bool()>& goesOn);

    [[nodiscard]] bool isCancelled() const {
        return control_ != nullptr && control_->isCancelled();
    }

    /// Up to a chunk, and less only at the end; nullopt when reading failed. Valid until the next
    /// call.
    [[nodiscard]] std::optional<Bytes> read(const Platform::Descriptor& file, std::int64_t offset);

private:
    struct alignas(kAlignment) Buffer {
        std::array<std::byte, kChunkBytes> bytes;
    };

    const ScanControl* control_;
    std::unique_ptr<Buffer> buffer_ = std::make_unique_for_overwrite<Buffer>();
};

}  // namespace Brimlo
