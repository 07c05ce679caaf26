#include "BrimloCore/Cleaner/CleanPlan.h"

#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <filesystem>

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

TEST_F(CleanPlanTest, TellsWhatGoesForGood) {
    const CleanItem file{.path = "/a", .size = 5'000'000, .ruleID = {}, .risk = {}};
    const CleanItem image{"docker:image:sha256:ab12", 2'000'000, {}, {}, "shop:3"};
    const CleanItem twin{"docker:image:sha256:cd34", 1'000'000, {}, {}, "shop:3"};
    const auto linked = std::make_shared<const SharedSpace>(
        SharedSpace{.files = {{.identity = {1, 2}, .bytes = 2'000'000, .names = 2}}, .unsure = {}});
    const auto cloned = std::make_shared<const SharedSpace>(SharedSpace{
        .files = {},
          .unsure = {.bytes = 2'000'000, .ranges = {{.start = 0, .end = 2'000'000}}}
    });
    const CleanItem one{"/one", 5'000'000, {}, {}, {}, linked};
    const CleanItem other{"/two", 2'000'000, {}, {}, {}, linked};
    const CleanItem clone{"/three", 3'000'000, {}, {}, {}, cloned};
    const CleanItem twinOfIt{"/clone", 2'000'000, {}, {}, {}, cloned};
    const CleanItem untagged{"docker:image:sha256:ef56", 0, {}, {}, "<untagged> ef56"};
    const struct {
        const char* name;
        std::vector<CleanItem> items;
        Paths words;  ///< The names, then the amount, the destination and the warning.
    } cases[] = {
        {"a file",               {file}, {"/a", "5 MB", "Goes to Trash first · undo anytime", ""}},
        {"a name of a file",
         {one},
         {"/one", "5 MB, frees 3 MB", "Goes to Trash first · undo anytime", ""}                  },
        {"both names of a file",
         {one, other},
         {"/one", "/two", "7 MB, frees 5 MB", "Goes to Trash first · undo anytime", ""}          },
        {"two clones",
         {clone, twinOfIt},
         {"/three",
          "/clone",
          "5 MB, frees at least 1 MB",
          "Goes to Trash first · undo anytime",
          ""}                                                                                    },
        {"a clone alone",
         {twinOfIt},
         {"/clone", "2 MB, may free nothing", "Goes to Trash first · undo anytime", ""}          },
        {"a name and an object",
         {one, image},
         {"/one",
          "Docker image shop:3 (ab12)",
          "7 MB (2 MB for good), frees 5 MB",
          "2 MB for good, the rest to Trash",
          "1 item (2 MB) goes for good and cannot be put back."}                                 },
        {"objects of one title",
         {image, twin},
         {"Docker image shop:3 (ab12)",
          "Docker image shop:3 (cd34)",
          "3 MB for good",
          "3 MB for good",
          "2 items (3 MB) go for good and cannot be put back."}                                  },
        {"both",
         {file, untagged, image},
         {"/a",
          "Docker image <untagged> ef56",
          "Docker image shop:3 (ab12)",
          "7 MB (2 MB for good)",
          "2 MB for good, the rest to Trash",
          "2 items (2 MB) go for good and cannot be put back."}                                  },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const CleanPlan plan{c.items};
        Paths words;
        CleanFigures rest = plan.figures();
        const CleanFigures all = rest;
        for (const CleanItem& item : plan.items()) {
            words.push_back(item.name());
            rest.remove(item);
        }
        words.insert(words.end(), {all.amount(), all.destination(), all.warning()});
        EXPECT_EQ(words, c.words);
        EXPECT_EQ(rest, CleanFigures{});
    }
}

TEST_F(CleanPlanTest, MeasuresWhatAPersonChose) {
    const std::string file = fill("file", 9000);
    std::filesystem::create_hard_link(file, at("name outside"));
    const CleanPlan plan{
        {{.path = file, .size = 9000, .ruleID = {}, .risk = {}}, {"docker:volume:v", 5, {}, {}}}
    };
    EXPECT_EQ(plan.figures().freed.atLeast(), 9005);
    EXPECT_EQ(plan.measured().figures().freed.atLeast(), 5);
    EXPECT_EQ(plan.measured().figures().freedFromTrash(), 0);
}

}  // namespace
}  // namespace Brimlo
