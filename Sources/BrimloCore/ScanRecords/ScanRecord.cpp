#include "BrimloCore/ScanRecords/ScanRecord.h"

#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Models/Bytes.h"
#include "BrimloCore/Platform/FileIdentity.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <ranges>
#include <set>
#include <utility>

namespace Brimlo {

namespace {

using Folder = ScanRecord::Folder;

// The content of a file: this line, numbers and texts, and the hash of all before it. A number is
// written in groups of seven bits, the lowest first, with the eighth bit set in all but the last;
// a text is its length and its bytes.
constexpr std::string_view kFormat = "Brimlo scan ";
constexpr std::string_view kVersion = "1\n";
constexpr std::size_t kHashBytes = 8;
constexpr unsigned kGroupBits = 7;
constexpr std::uint64_t kGroup = (1U << kGroupBits) - 1;
constexpr unsigned kWordBits = 64;
/// The numbers of a folder, each of one byte or more.
constexpr std::size_t kLeastFolderBytes = 5;
/// The end of the year 9999, the last that has a text.
constexpr std::int64_t kLatest = 253'402'300'799;

/// A node that a record lists, and the index of the folder around it.
struct Listed {
    const FileNode* node;
    std::size_t parent;
};

/// The folders of at least `floor` bytes; a folder's parent is never smaller than the folder.
std::vector<Listed> listed(const FileNode& root, std::int64_t floor) {
    std::vector<Listed> all{
        {&root, 0}
    };
    for (std::size_t i = 0; i < all.size() && all.size() <= ScanRecord::kMostFolders; ++i) {
        for (const FileNode* child : all[i].node->children()) {
            if (child->isDirectory && child->size >= floor) {
                all.push_back({child, i});
            }
        }
    }
    return all;
}

void appendNumber(std::string& bytes, std::uint64_t number) {
    for (; number > kGroup; number >>= kGroupBits) {
        bytes.push_back(static_cast<char>((number & kGroup) | (kGroup + 1)));
    }
    bytes.push_back(static_cast<char>(number));
}

void appendText(std::string& bytes, std::string_view text) {
    appendNumber(bytes, text.size());
    bytes.append(text);
}

std::string hashBytes(std::string_view bytes) {
    constexpr unsigned kByteBits = 8;
    std::uint64_t hash = ScanRecord::hash(bytes);
    std::string text;
    for (std::size_t i = 0; i < kHashBytes; ++i, hash >>= kByteBits) {
        text.push_back(static_cast<char>(static_cast<unsigned char>(hash)));
    }
    return text;
}

/// Takes numbers and texts from the front of some bytes. After a fault all are 0 and empty.
class Reader {
public:
    explicit Reader(std::string_view bytes)
        : bytes_{bytes} {}

    [[nodiscard]] std::uint64_t number() {
        std::uint64_t number = 0;
        for (unsigned shift = 0; shift < kWordBits && !bytes_.empty(); shift += kGroupBits) {
            const auto byte = static_cast<unsigned char>(bytes_.front());
            bytes_.remove_prefix(1);
            number |= (byte & kGroup) << shift;
            if (byte <= kGroup) {
                return number;
            }
        }
        fail();
        return 0;
    }

    /// A number that is not negative.
    [[nodiscard]] std::int64_t count() {
        const std::uint64_t read = number();
        if (std::cmp_greater(read, std::numeric_limits<std::int64_t>::max())) {
            fail();
            return 0;
        }
        return static_cast<std::int64_t>(read);
    }

    [[nodiscard]] std::string text() {
        const std::uint64_t length = number();
        if (length > bytes_.size()) {
            fail();
            return {};
        }
        std::string text{bytes_.substr(0, length)};
        bytes_.remove_prefix(length);
        return text;
    }

    [[nodiscard]] std::size_t left() const { return bytes_.size(); }
    [[nodiscard]] bool isAtEnd() const { return bytes_.empty() && !hasFailed_; }

private:
    void fail() {
        hasFailed_ = true;
        bytes_ = {};
    }

    std::string_view bytes_;
    bool hasFailed_ = false;
};

bool isName(std::string_view name) {
    return Path::isUsable(name) && !name.contains('/') && name != "." && name != "..";
}

/// Whether the fields agree with each other, whatever bytes they were read from.
bool isSound(const ScanRecord& record) {
    if (record.folders.empty() || !record.root.starts_with('/') || !Path::isUsable(record.root) ||
        Path::standardized(record.root) != record.root || record.floor < 1 ||
        record.time.time_since_epoch().count() > kLatest || !record.folders.front().name.empty()) {
        return false;
    }
    std::set<std::pair<std::size_t, std::string_view>> places;
    for (std::size_t i = 1; i < record.folders.size(); ++i) {
        const Folder& folder = record.folders[i];
        if (folder.parent >= i || !isName(folder.name) ||
            !places.emplace(folder.parent, folder.name).second) {
            return false;
        }
    }
    return std::ranges::all_of(record.rests(), [](std::int64_t rest) { return rest >= 0; });
}

Folder readFolder(Reader& reader, std::size_t index) {
    Folder folder;
    const std::uint64_t distance = reader.number();
    folder.parent = distance <= index ? index - distance : index;
    folder.name = reader.text();
    folder.size = reader.count();
    folder.fileCount = reader.count();
    folder.inode = reader.number();
    return folder;
}

}  // namespace

ScanRecord ScanRecord::of(const FileNode& root, std::chrono::sys_seconds time) {
    ScanRecord record{.root = root.path(), .time = time};
    // In a crowded folder the scan merges smaller ones.
    record.floor = ScanOptions{}.keepThreshold;
    std::vector<Listed> nodes = listed(root, record.floor);
    while (nodes.size() > kMostFolders) {
        record.floor *= 2;
        nodes = listed(root, record.floor);
    }
    // The root may be a symlink, which the scan followed.
    const auto top = Platform::FileIdentity::of(record.root + "/.");
    record.device = top ? top->device : 0;
    record.folders.reserve(nodes.size());
    for (const auto& [node, parent] : nodes) {
        const bool isRoot = node == &root;
        const auto identity = isRoot ? top : Platform::FileIdentity::of(node->path());
        record.folders.push_back(
            {.parent = parent,
             .name = isRoot ? std::string{} : std::string{node->name()},
             .size = node->size,
             .fileCount = node->fileCount,
             .inode = identity && identity->device == record.device ? identity->inode : 0});
    }
    return record;
}

std::string ScanRecord::path(std::size_t folder) const {
    std::vector<std::string_view> names;
    for (; folder != 0; folder = folders[folder].parent) {
        names.emplace_back(folders[folder].name);
    }
    std::string path = root;
    for (const std::string_view name : names | std::views::reverse) {
        path.append(path.ends_with('/') ? "" : "/").append(name);
    }
    return path;
}

std::vector<std::int64_t> ScanRecord::rests() const {
    std::vector<std::int64_t> rests;
    rests.reserve(folders.size());
    for (std::size_t i = 0; i < folders.size(); ++i) {
        rests.push_back(folders[i].size);
        if (i > 0) {
            std::int64_t& around = rests[folders[i].parent];
            around = Bytes::sum(around, -folders[i].size);
        }
    }
    return rests;
}

std::string ScanRecord::encode() const {
    std::string bytes{kFormat};
    bytes += kVersion;
    appendText(bytes, root);
    for (const std::int64_t number : {std::int64_t{time.time_since_epoch().count()}, floor}) {
        appendNumber(bytes, static_cast<std::uint64_t>(number));
    }
    appendNumber(bytes, device);
    appendNumber(bytes, folders.size());
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const Folder& folder = folders[i];
        appendNumber(bytes, i - folder.parent);
        appendText(bytes, folder.name);
        appendNumber(bytes, static_cast<std::uint64_t>(folder.size));
        appendNumber(bytes, static_cast<std::uint64_t>(folder.fileCount));
        appendNumber(bytes, folder.inode);
    }
    return bytes + hashBytes(bytes);
}

std::expected<ScanRecord, std::string> ScanRecord::decode(std::string_view bytes) {
    if (!bytes.starts_with(kFormat)) {
        return std::unexpected("it is no record of a scan");
    }
    if (!bytes.substr(kFormat.size()).starts_with(kVersion)) {
        return std::unexpected("it is of another version");
    }
    const std::size_t head = kFormat.size() + kVersion.size();
    if (bytes.size() < head + kHashBytes || hashBytes(bytes.substr(0, bytes.size() - kHashBytes)) !=
                                                bytes.substr(bytes.size() - kHashBytes)) {
        return std::unexpected("it is cut or damaged");
    }
    Reader reader{bytes.substr(head, bytes.size() - head - kHashBytes)};
    ScanRecord record;
    record.root = reader.text();
    record.time = std::chrono::sys_seconds{std::chrono::seconds{reader.count()}};
    record.floor = reader.count();
    record.device = reader.number();
    const std::uint64_t count = reader.number();
    if (count > kMostFolders || count > reader.left() / kLeastFolderBytes) {
        return std::unexpected("it is cut or damaged");
    }
    for (std::size_t i = 0; i < count; ++i) {
        record.folders.push_back(readFolder(reader, i));
    }
    if (!reader.isAtEnd() || !isSound(record)) {
        return std::unexpected("it is cut or damaged");
    }
    return record;
}

std::uint64_t ScanRecord::hash(std::string_view bytes) {
    constexpr std::uint64_t kStart = 0xCBF29CE484222325;
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t hash = kStart;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * kPrime;
    }
    return hash;
}

}  // namespace Brimlo
