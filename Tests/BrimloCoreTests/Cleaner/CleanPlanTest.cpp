#include "BrimloCore/Cleaner/CleanPlan.h"

#include "Support/TempHome.h"

#include <algorithm>
#include <limits>
#include <random>

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
        {"nothing",                             {},                          {},                          {}            },
        {"a folder around and its spelling",    {"/a/b/c", "/a/b", "/a/b/"}, {"/a/b"},                    {"/a/b/c"}    },
        {"equal lengths keep their order",      {"/z/1", "/a/2", "/m/3"},    {"/z/1", "/a/2", "/m/3"},    {}            },
        {"shorter ones first",                  {"/aaa", "/b", "/cc"},       {"/b", "/cc", "/aaa"},       {}            },
        {"first spelling stays",                {"/a/./b/../c", "/a/c"},     {"/a/./b/../c"},             {}            },
        {"a name is no folder of a longer one", {"/abc", "/abcd"},           {"/abc", "/abcd"},           {}            },
        {"far below",                           {"/a/b/c/d/e", "/a"},        {"/a"},                      {"/a/b/c/d/e"}},
        {"the dropped keep their spelling",     {"/a", "/a//b/."},           {"/a"},                      {"/a//b/."}   },
        {"the root is never looked up",         {"/", "/a"},                 {"/", "/a"},                 {}            },
        {"letter case counts",                  {"/a", "/A/b"},              {"/a", "/A/b"},              {}            },
        {"characters are counted, not bytes",
         {"/abc", "/\u00e9\u00e9"},
         {"/\u00e9\u00e9", "/abc"},
         {}                                                                                                             },
        {"combined marks count once",           {"/abc", "/e\u0301e\u0301"}, {"/e\u0301e\u0301", "/abc"}, {}            },
        {"Docker objects compare as text",
         {"docker:image:a/../b", "docker:image:b", "docker:image:b"},
         {"docker:image:b", "docker:image:a/../b"},
         {}                                                                                                             },
        {"Docker objects nest by text too",
         {"docker:a", "docker:a/b"},
         {"docker:a"},
         {"docker:a/b"}                                                                                                 },
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

TEST_F(CleanPlanTest, HoldsForAnyPaths) {
    std::mt19937 random{1};  // NOLINT(bugprone-random-generator-seed): the same paths at each run
    std::uniform_int_distribution<int> depth{1, 5};
    std::uniform_int_distribution<int> name{0, 2};
    const auto isInside = [](const std::string& path, const std::string& folder) {
        return path.starts_with(folder + "/");
    };
    for (int round = 0; round < 200; ++round) {
        Paths paths;
        for (int i = 0; i < 20; ++i) {
            std::string path;
            for (int level = depth(random); level > 0; --level) {
                path += "/" + std::string(1, static_cast<char>('a' + name(random)));
            }
            paths.push_back(path);
        }
        const CleanPlan plan = planFor(paths);
        const Paths items = kept(plan);
        for (const std::string& path : paths) {
            const bool isCovered = std::ranges::any_of(items, [&](const std::string& item) {
                return path == item || isInside(path, item);
            });
            EXPECT_TRUE(isCovered) << path;
        }
        for (const std::string& item : items) {
            EXPECT_EQ(std::ranges::count(items, item), 1) << item;
            EXPECT_TRUE(std::ranges::none_of(items, [&](const std::string& folder) {
                return isInside(item, folder);
            })) << item;
        }
    }
}

}  // namespace
}  // namespace Brimlo
