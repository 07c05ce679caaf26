#include "BrimloCore/Platform/macOS/AttributeRecords.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

// A record, by offsets from its start; nothing in it is aligned to more than four bytes:
//
//    0  length of the record, 4 bytes
//    4  the attributes that were returned, five sets of 4 bytes: common, volume, folder, file, fork
//   24  the name: its place relative to this field, 4 bytes signed, and its length with the NUL, 4
//   32  the kind of the entry, 4 bytes
//   36  the inode, 8 bytes                                  } only when the allocation was
//   44  the number of hard links, 4 bytes, when returned    } requested
//   48  the allocated bytes, 8 bytes, when returned; at 44 without the number of links

namespace Brimlo::Platform::AttributeRecords {

namespace {

// The values of <sys/attr.h> and <sys/vnode.h>, which macOS/DirectoryEntry.cpp asserts.
constexpr std::uint32_t kName = 0x00000001;
constexpr std::uint32_t kObjectType = 0x00000008;
constexpr std::uint32_t kFileID = 0x02000000;
constexpr std::uint32_t kReturnedAttributes = 0x80000000;
constexpr std::uint32_t kLinkCount = 0x00000001;
constexpr std::uint32_t kAllocatedSize = 0x00000004;
constexpr std::uint32_t kFolder = 2;

constexpr std::size_t kCommonAt = 4;
constexpr std::size_t kFileAt = 16;
constexpr std::size_t kNameAt = 24;
constexpr std::size_t kKindAt = 32;
constexpr std::size_t kFileIDAt = 36;
constexpr std::size_t kSizesAt = 44;

/// One record. Reads beyond its end return nullopt.
class Record {
public:
    explicit Record(std::span<const std::byte> bytes)
        : bytes_{bytes} {}

    template <typename Number>
    [[nodiscard]] std::optional<Number> number(std::size_t at) const {
        if (at > bytes_.size() || bytes_.size() - at < sizeof(Number)) {
            return std::nullopt;
        }
        Number number{};
        std::memcpy(&number, bytes_.subspan(at).data(), sizeof number);
        return number;
    }

    /// The NUL-terminated text that the reference at `at` leads to.
    [[nodiscard]] const char* text(std::size_t at) const {
        const auto offset = number<std::int32_t>(at);
        const auto length = number<std::uint32_t>(at + sizeof(std::int32_t));
        if (!offset || !length || *offset < 0) {
            return nullptr;
        }
        const std::size_t start = at + static_cast<std::size_t>(*offset);
        if (start > bytes_.size() || bytes_.size() - start < *length) {
            return nullptr;
        }
        const auto text = bytes_.subspan(start, *length);
        const bool ends = std::ranges::find(text, std::byte{0}) != text.end();
        return ends ? reinterpret_cast<const char*>(text.data()) : nullptr;
    }

private:
    std::span<const std::byte> bytes_;
};

/// Fills in the attributes beyond name and kind. False when the record is too short.
bool readAllocation(const Record& record, std::uint32_t fileAttributes, DirectoryEntry& entry) {
    std::size_t at = kSizesAt;
    if ((fileAttributes & kLinkCount) != 0) {
        const auto count = record.number<std::uint32_t>(at);
        if (!count) {
            return false;
        }
        entry.linkCount = *count;
        at += sizeof *count;
    }
    if ((fileAttributes & kAllocatedSize) != 0) {
        const auto size = record.number<std::int64_t>(at);
        if (!size) {
            return false;
        }
        entry.allocatedBytes = std::max<std::int64_t>(0, *size);
    }
    return true;
}

/// Whether a name can be that of an entry of this directory.
bool isUsable(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && !name.contains('/');
}

/// Passes on the entry of one record.
bool readOne(const Record& record, const std::function<void(const DirectoryEntry&)>& visit) {
    const auto common = record.number<std::uint32_t>(kCommonAt);
    const auto file = record.number<std::uint32_t>(kFileAt);
    const auto kind = record.number<std::uint32_t>(kKindAt);
    if (!common || !file || !kind) {
        return false;
    }
    if ((*common & kName) == 0) {
        return true;
    }
    const char* const name = record.text(kNameAt);
    if (name == nullptr) {
        return false;
    }
    DirectoryEntry entry{
        .name = name,
        .isDirectory = (*common & kObjectType) != 0 && *kind == kFolder,
    };
    if ((*common & kFileID) != 0) {
        const auto inode = record.number<std::uint64_t>(kFileIDAt);
        if (!inode) {
            return false;
        }
        entry.inode = *inode;
    }
    if (!entry.isDirectory && !readAllocation(record, *file, entry)) {
        return false;
    }
    if (isUsable(name)) {
        visit(entry);
    }
    return true;
}

}  // namespace

Request request(EntryDetail detail) {
    const std::uint32_t common = kReturnedAttributes | kObjectType | kName;
    if (detail == EntryDetail::kind) {
        return {.commonattr = common, .fileattr = 0};
    }
    return {.commonattr = common | kFileID, .fileattr = kAllocatedSize | kLinkCount};
}

bool read(
    std::span<const std::byte> buffer,
    std::size_t count,
    const std::function<void(const DirectoryEntry&)>& visit) {
    for (; count > 0; --count) {
        const auto length = Record{buffer}.number<std::uint32_t>(0);
        // A record shorter than its length field would make the loop endless.
        if (!length || *length < sizeof *length || *length > buffer.size() ||
            !readOne(Record{buffer.first(*length)}, visit)) {
            return false;
        }
        buffer = buffer.subspan(*length);
    }
    return true;
}

}  // namespace Brimlo::Platform::AttributeRecords
