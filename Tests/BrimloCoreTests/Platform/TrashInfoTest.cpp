#include "BrimloCore/Platform/Linux/TrashInfo.h"

#include "Support/TempHome.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <tuple>

namespace Brimlo::Platform {
namespace {

using Text = std::optional<std::string>;

TEST(TrashInfoTest, TellsThePathAndTheLocalTime) {
    setenv("TZ", "TST-05:30", 1);
    tzset();
    const TrashInfo info{.path = "/a b/100%\n\u00e9", .entryID = "ID"};
    EXPECT_EQ(
        info.text(86'399),
        "[Trash Info]\n"
        "Path=/a%20b/100%25%0A%C3%A9\n"
        "DeletionDate=1970-01-02T05:29:59\n"
        "X-Brimlo-Entry=ID\n");
    EXPECT_EQ(TrashInfo::parse(info.text(86'399))->date, 86'399);
    EXPECT_EQ(TrashInfo::parse("Path=/a\nDeletionDate=yesterday\n")->date, std::nullopt);
}

TEST(TrashInfoTest, BringsEachByteBack) {
    for (int byte = 1; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        std::string path = "/before";
        path.append(1, static_cast<char>(byte)).append("0Aafter");
        const std::string text = TrashInfo{.path = path, .entryID = "ID"}.text(0);
        EXPECT_EQ(std::ranges::count(text, '\n'), 4);
        EXPECT_TRUE(
            std::ranges::all_of(text, [](char c) { return c == '\n' || (c > 31 && c < 127); }));
        const auto info = TrashInfo::parse(text);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->path, path);
        EXPECT_EQ(info->entryID, "ID");
    }
}

TEST(TrashInfoTest, ReadsTheNotesOfOthers) {
    const std::tuple<const char*, Text, Text> cases[] = {
        {"[Trash Info]\nX-Brimlo-Entry=ID\nPath=/a\n", "/a", "ID"},
        {"Path=/a\nPath=/b\nX-Brimlo-Entry=1\nX-Brimlo-Entry=2\n", "/a", "1"},
        {"Path=/a%2\n", std::nullopt, std::nullopt},
        {"Path=/a%00b\n", std::string("/a\0b", 4), std::nullopt},
    };
    for (const auto& [text, path, entryID] : cases) {
        const auto info = TrashInfo::parse(text);
        EXPECT_EQ(info ? Text{info->path} : std::nullopt, path) << text;
        EXPECT_EQ(info ? info->entryID : std::nullopt, entryID) << text;
    }
}

}  // namespace
}  // namespace Brimlo::Platform
