#include "BrimloCore/ScanRecords/ScanHistory.h"

#include "BrimloCore/Support/AppConfig.h"
#include "BrimloCore/Support/Files.h"
#include "Support/TempHome.h"

#include <filesystem>

namespace Brimlo {
namespace {

using std::chrono::seconds;
using std::chrono::sys_seconds;

class ScanHistoryTest : public Testing::TempHome {
protected:
    static ScanRecord record(std::int64_t time) {
        ScanRecord record{.root = "/a", .time = sys_seconds{seconds{time}}, .floor = 9};
        record.folders = {
            {.size = 50},
            {.name = "\xff", .size = 20, .fileCount = 2, .inode = ~std::uint64_t{0}}
        };
        return record;
    }

    std::string folder() const { return at("Library/Application Support/Brimlo/Scans"); }

    /// The file of the newest record.
    std::string newestFile() const {
        const auto names = Folders::names(folder()).value_or(std::vector<std::string>{});
        return folder() + "/" + *std::ranges::max_element(names);
    }
};

TEST_F(ScanHistoryTest, KeepsFewAndRecentOnesDenser) {
    constexpr std::int64_t kFirst = 1'700'000'000;
    constexpr std::int64_t kDay = 86'400;
    constexpr int kDays = 100;
    for (int day = 0; day < kDays; ++day) {
        ASSERT_TRUE(ScanHistory::remember(record(kFirst + day * kDay)));
    }
    EXPECT_EQ(Folders::names(folder())->size(), ScanHistory::kMostOfOneRoot);
    EXPECT_EQ(ScanHistory::newest("/a").record, record(kFirst + (kDays - 1) * kDay));
    EXPECT_EQ(
        ScanHistory::newest("/a", sys_seconds{seconds{kFirst + kDay - 1}}).record, record(kFirst));
    const auto weekAgo = sys_seconds{seconds{kFirst + (kDays - 8) * kDay}};
    const auto found = ScanHistory::newest("/a", weekAgo).record;
    ASSERT_TRUE(found);
    EXPECT_GE(found->time, weekAgo - seconds{14 * kDay});
    EXPECT_FALSE(ScanHistory::newest("/b").record);
    EXPECT_FALSE(ScanHistory::newest("/a", sys_seconds{seconds{kFirst - 1}}).record);

    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder()).permissions(), perms::owner_all);
    EXPECT_EQ(
        std::filesystem::status(newestFile()).permissions(),
        perms::owner_read | perms::owner_write);
}

TEST_F(ScanHistoryTest, PassesOverWhatItCanNotUse) {
    const std::string good = record(2).encode();
    std::string flipped = good;
    flipped[flipped.size() / 2] ^= 1;
    const std::pair<std::string, std::string> cases[] = {
        {"", "it is no record of a scan"},
        {good.substr(0, good.size() - 1), "it is cut or damaged"},
        {flipped, "it is cut or damaged"},
        {good + "x", "it is cut or damaged"},
        {"Brimlo scan 2\n", "it is of another version"},
        {record(3).encode(), "its name is not its own"},
        {std::string(std::size_t{5} << 20U, 'x'), "File too large"},
    };
    ASSERT_TRUE(ScanHistory::remember(record(1)));
    ASSERT_TRUE(ScanHistory::remember(record(2)));
    const std::string path = newestFile();
    const auto expectRefused = [&](const std::string& reason) {
        const ScanHistory::Found found = ScanHistory::newest("/a");
        EXPECT_EQ(found.record, record(1)) << reason;
        EXPECT_EQ(
            found.refused,
            std::vector{"The record " + path + " could not be used: " + reason + "."});
    };
    for (const auto& [content, reason] : cases) {
        ASSERT_TRUE(AtomicFile::write(path, content));
        expectRefused(reason);
    }
    std::filesystem::remove(path);
    std::filesystem::create_symlink(write("elsewhere", good), path);
    expectRefused("it is no regular file");
}

TEST_F(ScanHistoryTest, WritesNothingWhenSwitchedOffAndForgets) {
    ASSERT_TRUE(ScanHistory::remember(record(1)));
    ASSERT_TRUE(AppConfig::change([](AppConfig& config) { config.rememberScans = false; }));
    ASSERT_TRUE(ScanHistory::remember(record(2)));
    EXPECT_EQ(ScanHistory::newest("/a").record, record(1));
    ASSERT_TRUE(ScanHistory::forget());
    EXPECT_EQ(Folders::names(folder()), std::vector<std::string>{});
}

}  // namespace
}  // namespace Brimlo
