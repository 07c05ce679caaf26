#include "BrimloCore/Cleaner/CleanPlan.h"

#include "BrimloCoreTests/Cleaner/CleaningHome.h"

namespace Brimlo {
namespace {

using Paths = std::vector<std::string>;

using CleanPlanTest = Testing::CleaningHome;

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
        const CleanPlan plan = planFor(c.paths);
        Paths kept;
        for (const CleanItem& item : plan.items()) {
            kept.push_back(item.path);
        }
        EXPECT_EQ(kept, c.items);
        EXPECT_EQ(plan.dropped(), c.dropped);
        EXPECT_EQ(plan.totalBytes(), kItemSize * std::ssize(c.items));
    }
}

}  // namespace
}  // namespace Brimlo
