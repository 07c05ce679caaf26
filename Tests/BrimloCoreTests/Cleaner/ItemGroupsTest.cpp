#include "BrimloCore/Cleaner/ItemGroups.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace Brimlo {
namespace {

TEST(ItemGroupsTest, FoldsTheManyItemsOfARuleInAFolder) {
    std::vector<CleanItem> items;
    const auto add = [&](std::size_t count, const std::string& prefix, const char* rule) {
        for (std::size_t i = 0; i < count; ++i) {
            items.push_back(
                {.path = prefix + std::to_string(i),
                 .size = 10,
                 .ruleID = rule == nullptr ? std::nullopt : std::optional<std::string>{rule},
                 .risk = {}});
        }
    };
    add(kManyItems, "/many/", "a");
    add(kManyItems + 1, "/many/other", "b");
    add(kManyItems - 1, "/few/", "a");
    add(kManyItems, "docker:image:", "docker.images");
    add(kManyItems, "/chosen/", nullptr);
    std::vector<std::pair<std::string, std::size_t>> folders;
    std::size_t single = 0;
    for (const ItemGroup& group : grouped(items)) {
        EXPECT_EQ(group.size, std::ssize(group.items) * 10);
        if (group.isFolder()) {
            folders.emplace_back(group.folder, group.items.size());
        } else {
            ++single;
        }
    }
    const std::vector<std::pair<std::string, std::size_t>> expected{
        {"/many", kManyItems + 1},
        {"/many", kManyItems    }
    };
    EXPECT_EQ(folders, expected) << "the largest first";
    EXPECT_EQ(single, 3 * kManyItems - 1);
}

}  // namespace
}  // namespace Brimlo
