#include "BrimloCore/Cleaner/CleanPlan.h"

#include "Support/TempHome.h"

namespace Brimlo {
namespace {

using Paths = std::vector<std::string>;

using CleanPlanTest = Testing::TempHome;

TEST_F(CleanPlanTest, KeepsNoPathTwiceAndNothingInsideAnother) {
    const struct {
        const char* name;
        Paths paths;
        Paths items;
        Paths dropped;
    } cases[] = {
        {"a folder around and its spelling",    {"/a/b/c", "/a/b", "/a/b/"}, {"/a/b"},          {"/a/b/c"}},
        {"a name is no folder of a longer one", {"/abc", "/abcd"},           {"/abc", "/abcd"}, {}        },
        {"the root is never looked up",         {"/", "/a"},                 {"/", "/a"},       {}        },
        {"letter case counts",                  {"/a", "/A/b"},              {"/a", "/A/b"},    {}        },
        {"Docker objects compare as text",
         {"docker:image:a/../b", "docker:image:b", "docker:image:b"},
         {"docker:image:b", "docker:image:a/../b"},
         {}                                                                                               },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<CleanItem> items;
        for (const std::string& path : c.paths) {
            items.push_back({.path = path, .size = 1, .ruleID = {}, .risk = {}});
        }
        const CleanPlan plan{items};
        Paths kept;
        for (const CleanItem& item : plan.items()) {
            kept.push_back(item.path);
        }
        EXPECT_EQ(kept, c.items);
        EXPECT_EQ(plan.dropped(), c.dropped);
        EXPECT_EQ(plan.totalBytes(), static_cast<std::int64_t>(c.items.size()));
    }
}

}  // namespace
}  // namespace Brimlo
