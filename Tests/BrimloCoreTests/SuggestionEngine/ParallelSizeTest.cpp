#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/SuggestionEngine/RuleTargets.h"
#include "Support/TempHome.h"

namespace Brimlo {
namespace {

class ParallelSizeTest : public Testing::TempHome {};

TEST_F(ParallelSizeTest, GivesEachItemItsOwnSize) {
    std::vector<SuggestionItem> items;
    std::vector<SuggestionItem> expected;
    for (std::size_t i = 0; i < 120; ++i) {
        const std::string name = "f" + std::to_string(i);
        write(name + "/one", std::string(i * 1'000, 'x'));
        write(name + "/inner/two", std::string(i % 7 * 10'000, 'x'));
        items.push_back({.path = at(name), .detail = name});
        expected.push_back(
            {.path = at(name), .size = DiskScanner::quickSize(at(name)), .detail = name});
    }
    items.push_back({.path = home()});
    expected.push_back({.path = home(), .size = DiskScanner::quickSize(home())});
    EXPECT_EQ(SuggestionEngine::size(items), expected);
}

}  // namespace
}  // namespace Brimlo
