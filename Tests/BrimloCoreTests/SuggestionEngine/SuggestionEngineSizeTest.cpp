#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "Support/TempHome.h"

namespace Brimlo {
namespace {

class SuggestionEngineSizeTest : public Testing::TempHome {};

TEST_F(SuggestionEngineSizeTest, GivesEachItemItsOwnSizeInOrder) {
    std::vector<SuggestionItem> items;
    std::vector<SuggestionItem> expected;
    const auto add = [&](const std::string& path) {
        items.push_back(
            {.path = path, .size = 7, .idleDays = 3, .detail = "detail", .subtitle = "subtitle"});
        expected.push_back({
            .path = path,
            .size = DiskScanner::quickSize(path),
            .idleDays = 3,
            .detail = "detail",
        });
    };
    for (std::size_t i = 0; i < 120; ++i) {
        const std::string name = "f" + std::to_string(i);
        write(name + "/one", std::string(i * 1'000, 'x'));
        write(name + "/inner/two", std::string(i % 7 * 10'000, 'x'));
        add(at(name));
    }
    add(home());
    add(at("missing"));
    add(at("f1"));
    EXPECT_EQ(SuggestionEngine::size(items), expected);
    EXPECT_EQ(SuggestionEngine::size(std::vector<SuggestionItem>{}), std::vector<SuggestionItem>{});
}

}  // namespace
}  // namespace Brimlo
