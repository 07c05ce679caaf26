#include "BrimloCore/Platform/macOS/AttributeRecords.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace Brimlo::Platform {
namespace {

constexpr std::uint32_t kFile = 1;
constexpr std::uint32_t kFolder = 2;
constexpr std::uint32_t kLink = 5;
constexpr std::uint32_t kAllCommon = 0x82000009;
constexpr std::uint32_t kNothing = std::numeric_limits<std::uint32_t>::max();

/// What the kernel would pack for one entry.
struct Packed {
    std::string name = "name";
    std::uint32_t kind = kFile;
    std::uint64_t fileID = 7;
    std::uint32_t links = kNothing;  ///< Not returned by default.
    std::int64_t size = -1;          ///< Likewise.
    std::uint32_t common = kAllCommon;
    bool hasFileID = true;

    [[nodiscard]] std::string bytes() const {
        std::string fixed;
        const auto put = [&](auto number) {
            fixed.append(reinterpret_cast<const char*>(&number), sizeof number);
        };
        const std::uint32_t file = (links != kNothing ? 1U : 0U) | (size >= 0 ? 4U : 0U);
        for (const std::uint32_t attributes : {common, 0U, 0U, file, 0U}) {
            put(attributes);
        }
        put(std::int32_t{0});  // The place of the name, below.
        put(static_cast<std::uint32_t>(name.size() + 1));
        put(kind);
        if (hasFileID) {
            put(fileID);
        }
        if (links != kNothing) {
            put(links);
        }
        if (size >= 0) {
            put(size);
        }
        std::string record(4, '\0');
        record += fixed;
        const auto place = static_cast<std::int32_t>(record.size() - 24);
        std::memcpy(record.data() + 24, &place, sizeof place);
        record += name + '\0';
        record.resize((record.size() + 3) / 4 * 4);
        const auto length = static_cast<std::uint32_t>(record.size());
        std::memcpy(record.data(), &length, sizeof length);
        return record;
    }
};

/// Every entry on a line of its own, then "end" when all could be read.
std::vector<std::string> read(const std::string& bytes, std::size_t count) {
    // On the heap to the byte, so that a sanitizer sees a look beyond it.
    const auto buffer = std::make_unique<std::byte[]>(bytes.size());
    std::memcpy(buffer.get(), bytes.data(), bytes.size());
    std::vector<std::string> lines;
    const bool isRead =
        AttributeRecords::read({buffer.get(), bytes.size()}, count, [&](const auto& entry) {
            lines.push_back(
                std::string{entry.name} + (entry.isDirectory ? "/" : "") + " " +
                std::to_string(entry.inode) + " x" + std::to_string(entry.linkCount) + " " +
                std::to_string(entry.allocatedBytes));
        });
    if (isRead) {
        lines.emplace_back("end");
    }
    return lines;
}

std::string with(std::string bytes, std::size_t at, auto number) {
    std::memcpy(bytes.data() + at, &number, sizeof number);
    return bytes;
}

using Lines = std::vector<std::string>;

TEST(AttributeRecordsTest, ReadsWhatTheKernelPacks) {
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const std::string bytes =
        Packed{.name = "plain", .links = 1, .size = 4096}.bytes() +
        Packed{.name = "linked", .fileID = most, .links = 3, .size = 8192}.bytes() +
        Packed{.name = "no count", .size = 512}.bytes() +
        Packed{.name = "no size", .links = 2}.bytes() +
        Packed{.name = "folder", .kind = kFolder}.bytes() +
        Packed{.name = "link", .kind = kLink, .links = 1, .size = 0}.bytes() +
        Packed{.name = "kind unknown", .kind = kFolder, .common = 0x82000001}.bytes() +
        Packed{.name = "unnamed", .common = 0x82000008}.bytes() +
        Packed{.name = std::string(255, 'n'), .size = 1}.bytes();
    EXPECT_EQ(
        read(bytes, 9),
        (Lines{
            "plain 7 x1 4096",
            "linked 18446744073709551615 x3 8192",
            "no count 7 x0 512",
            "no size 7 x2 0",
            "folder/ 7 x0 0",
            "link 7 x1 0",
            "kind unknown 7 x0 0",
            std::string(255, 'n') + " 7 x0 1",
            "end"}));
    EXPECT_EQ(read(bytes, 1), (Lines{"plain 7 x1 4096", "end"})) << "no more than were told";
    EXPECT_EQ(read("", 0), Lines{"end"});
}

TEST(AttributeRecordsTest, ReadsKindsAlone) {
    const Packed file{.name = "f", .common = 0x80000009, .hasFileID = false};
    const Packed folder{.name = "d", .kind = kFolder, .common = 0x80000009, .hasFileID = false};
    EXPECT_EQ(read(file.bytes() + folder.bytes(), 2), (Lines{"f 0 x0 0", "d/ 0 x0 0", "end"}));
}

TEST(AttributeRecordsTest, LeavesOutNamesThatLeadElsewhere) {
    std::string bytes;
    for (const std::string name : {".", "..", "", "a/b", "../x", "...", "\xff"}) {
        bytes += Packed{.name = name}.bytes();
    }
    EXPECT_EQ(read(bytes, 7), (Lines{"... 7 x0 0", "\xff 7 x0 0", "end"}));
}

TEST(AttributeRecordsTest, ReadsNothingBeyondARecord) {
    const std::string good = Packed{.name = "good", .links = 1, .size = 1}.bytes();
    const Lines whole{"good 7 x1 1", "end"};
    const Lines first{"good 7 x1 1"};
    ASSERT_EQ(read(good, 1), whole);
    EXPECT_EQ(read(good, 2), first) << "fewer than were told";
    for (std::size_t length = 0; length < good.size(); ++length) {
        SCOPED_TRACE(length);
        EXPECT_EQ(read(good.substr(0, length), 1), Lines{}) << "cut off";
        EXPECT_EQ(read(good + good.substr(0, length), 2), first);
        // A record that says that it is shorter than what it says that it holds.
        const auto lines = read(with(good, 0, static_cast<std::uint32_t>(length)), 1);
        EXPECT_TRUE(lines.empty() || length >= 56 + sizeof "good") << lines.front();
    }
    const std::uint32_t huge = kNothing;
    for (const std::uint32_t length : {huge, huge - 3, 0x80000000U}) {
        EXPECT_EQ(read(with(good, 0, length), 1), Lines{}) << "record of " << length;
        EXPECT_EQ(read(with(good, 28, length), 1), Lines{}) << "name of " << length;
    }
    EXPECT_EQ(read(with(good, 28, 0U), 1), Lines{}) << "a name without an end";
    EXPECT_EQ(read(with(good, 28, 4U), 1), Lines{}) << "a name without an end";
    for (const std::int32_t place : {-24, -1, 1'000, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(read(with(good, 24, place), 1), Lines{}) << "name at " << place;
    }
    const std::string negative = with(good, 48, std::int64_t{-1});
    EXPECT_EQ(read(negative, 1), (Lines{"good 7 x1 0", "end"}));
}

}  // namespace
}  // namespace Brimlo::Platform
