#include "BrimloCore/Cleaner/CleanPlan.h"

#include "Support/TempHome.h"

namespace Brimlo {
namespace {

using Paths = std::vector<std::string>;

class CleanPlanTest : public Testing::TempHome {
protected:
    static CleanPlan planFor(const Paths& paths) {
        std::vector<CleanItem> items;
        for (const std::string& path : paths) {
            items.push_back({.path = path, .size = 1, .ruleID = {}, .risk = {}});
        }
        return CleanPlan{items};
    }

    static Paths kept(const CleanPlan& plan) {
        Paths paths;
        for (const CleanItem& item : plan.items()) {
            paths.push_back(item.path);
        }
        return paths;
    }
};

TEST_F(CleanPlanTest, KeepsNoPathTwiceAndNothingInsideAnother) {
    struct Case {
        const char* name;
        Paths paths;
        Paths items;
        Paths dropped;
    };
    const Case cases[] = {
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
        EXPECT_EQ(kept(plan), c.items);
        EXPECT_EQ(plan.dropped(), c.dropped);
        EXPECT_EQ(plan.totalBytes(), static_cast<std::int64_t>(c.items.size()));
    }
}

TEST_F(CleanPlanTest, KeepsTheFirstItemAsItCame) {
    const CleanItem first{.path = "/a/b/", .size = 5, .ruleID = "one", .risk = Risk::safe};
    const CleanItem again{.path = "/a/b", .size = 50, .ruleID = "two", .risk = {}};
    const CleanItem inside{.path = "/a/b/c", .size = 500, .ruleID = {}, .risk = {}};
    const CleanPlan plan{
        {inside, first, again}
    };
    EXPECT_EQ(plan.items(), std::vector{first});
    EXPECT_EQ(plan.totalBytes(), 5);
}

}  // namespace
}  // namespace Brimlo
