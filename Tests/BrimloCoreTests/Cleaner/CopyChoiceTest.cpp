#include "BrimloCore/Cleaner/CopyChoice.h"

#include "BrimloCore/Cleaner/DuplicateExtras.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"

#include <filesystem>
#include <functional>
#include <utility>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using Testing::contentOf;
using Testing::exists;

class CopyChoiceTest : public Testing::CleaningHome {
protected:
    /// Four equal files: b is the newest, c the oldest, d has the shortest path.
    void makeCopies() {
        age(write("a/photo"), 2);
        age(write("b/photo"), 1);
        age(write("c/photo"), 3);
        age(write("d"), 2);
        link("to b", at("b"));
        groups_ = DuplicateFinder::find({home()}, 7);
        ASSERT_EQ(groups_.size(), 1U);
    }

    /// "path: reason" of what stays; the plan must be for the others.
    [[nodiscard]] Lines staying(const CopyChoice& choice) const {
        Lines lines;
        const auto reasons = choice.reasons(groups_).at(0);
        std::size_t planned = 0;
        const CleanPlan plan = DuplicateExtras::plan(groups_, choice);
        for (const CleanItem& item : plan.items()) {
            planned += item.copyOf ? 1 : 0;
        }
        EXPECT_EQ(planned, extraCount(reasons));
        for (std::size_t i = 0; i < reasons.size(); ++i) {
            if (reasons[i]) {
                const std::string& path = groups_.at(0).copies.at(i).path;
                lines.push_back(
                    path.substr(home().size() + 1) + ": " + std::string{words(*reasons[i])});
            }
        }
        return lines;
    }

    std::vector<DuplicateGroup> groups_;
};

TEST_F(CopyChoiceTest, TellsTheTidiestFolder) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"/h/Backups/a.jpg", "/h/Downloads/a.jpg", "/h/Pictures/Rome 2025/a.jpg"},
         "/h/Pictures/Rome 2025/a.jpg"                                                                            },
        {{"/h/Pictures/a (1).jpg", "/h/Pictures/of all years/a.jpg"},
         "/h/Pictures/of all years/a.jpg"                                                                         },
        {{"/h/Phone backup/2024/a", "/h/Desktop/a copy"},                           "/h/Desktop/a copy"           },
        {{"/h/Golden templates/a (Rome)", "/h/old/a"},                              "/h/Golden templates/a (Rome)"},
        {{"/h/long name/a", "/h/name/a"},                                           "/h/name/a"                   },
    };
    for (const auto& [paths, staying] : cases) {
        DuplicateGroup group{.size = 1, .copies = {}};
        for (const std::string& path : paths) {
            group.copies.push_back({.path = path});
        }
        const auto reasons = CopyChoice{KeepReason::tidiestFolder}.reasons({group}).front();
        const auto kept = std::ranges::find(reasons, KeepReason::tidiestFolder);
        EXPECT_EQ(paths.at(static_cast<std::size_t>(kept - reasons.begin())), staying);
    }
}

TEST_F(CopyChoiceTest, KeepsWhatTheRuleTheFolderAndTheHandSay) {
    using enum KeepReason;
    struct Case {
        KeepReason rule;
        Lines folders;
        const char* byHand;
        Lines staying;
    };
    const Case cases[] = {
        {firstByName,  {},     "",        {"a/photo: first by name"}                                },
        {newest,       {},     "",        {"b/photo: the newest"}                                   },
        {oldest,       {},     "",        {"c/photo: the oldest"}                                   },
        {shortestPath, {},     "",        {"d: the shortest path"}                                  },
        {newest,       {},     "c/photo", {"c/photo: chosen by hand"}                               },
        {newest,       {},     "gone",    {"b/photo: the newest"}                                   },
        {newest,       {"c"},  "",        {"c/photo: in a kept folder"}                             },
        {newest,
         {"c/../a", "to b/."},
         "",                              {"a/photo: in a kept folder", "b/photo: in a kept folder"}},
        {oldest,       {"b"},  "d",       {"b/photo: in a kept folder", "d: chosen by hand"}        },
        {oldest,
         {""},
         "",                              {"a/photo: in a kept folder",
          "b/photo: in a kept folder",
          "c/photo: in a kept folder",
          "d: in a kept folder"}                                                        },
    };
    makeCopies();
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.staying));
        CopyChoice choice{c.rule};
        for (const std::string& folder : c.folders) {
            EXPECT_TRUE(choice.keepUnder(at(folder)));
        }
        choice.keep(groups_.at(0).id, at(c.byHand));
        EXPECT_EQ(staying(choice), c.staying);
    }
    CopyChoice choice;
    for (const char* none : {"gone", "d"}) {
        EXPECT_EQ(choice.keepUnder(at(none)).error().description, at(none) + " is not a folder");
    }
    EXPECT_TRUE(choice.folders().empty());
    // The folder of a copy leads into the kept one since the search.
    ASSERT_TRUE(choice.keepUnder(at("c")));
    fs::remove_all(at("b"));
    link("b", "c");
    EXPECT_EQ(staying(choice), (Lines{"b/photo: in a kept folder", "c/photo: in a kept folder"}));
}

TEST_F(CopyChoiceTest, MovesNoExtraThatHasNoEqualAnyMore) {
    const std::string unequal = "is no longer equal to " + at("a/1");
    using Change = std::function<void()>;
    const std::pair<Change, std::string> cases[] = {
        {[] {},                                   ""                                                  },
        {[&] { write("a/2", "CONTENT"); },        unequal                                             },
        {[&] { write("a/1", "longer content"); }, unequal                                             },
        {[&] { fs::remove(at("a/1")); },          "the copy to keep, " + at("a/1") + ", can't be read"},
        {[&] {
             fs::remove(at("a/1"));
             fs::create_hard_link(at("a/2"), at("a/1"));
         },                              "is the same file as " + at("a/1")                  },
    };
    for (const auto& [change, reason] : cases) {
        SCOPED_TRACE(reason);
        fs::remove_all(at("a"));
        static_cast<void>(write("a/1") + write("a/2"));
        const CleanPlan plan = DuplicateExtras::plan(DuplicateFinder::find({at("a")}, 1));
        change();
        const CleanReport report = cleaner_.execute(plan, DisposalMode::trash, false);
        EXPECT_EQ(report.failures.empty() ? "" : report.failures.at(0).reason, reason);
        EXPECT_EQ(exists(at("a/2")), !reason.empty());
    }
    // The copy that stays is in the same clean.
    fs::remove_all(at("a"));
    static_cast<void>(write("a/1") + write("a/2"));
    const CleanPlan both{
        {{.path = at("a/1")}, {.path = at("a/2"), .copyOf = at("a/1")}}
    };
    EXPECT_EQ(cleaner_.execute(both, DisposalMode::trash, false).processed, 1);
    EXPECT_TRUE(exists(at("a/2")));
    // Changed after the comparison: while another item of the same group is prepared.
    fs::remove_all(at("a"));
    static_cast<void>(write("a/1") + write("a/2") + write("a/3"));
    const CleanPlan plan = DuplicateExtras::plan(DuplicateFinder::find({at("a")}, 1));
    const CleanOptions options{
        .progress = [&](const CleanItem&) { write("a/1", "CONTENT"); }, .isStopped = {}};
    const CleanReport report = cleaner_.execute(plan, DisposalMode::trash, false, options);
    EXPECT_EQ(report.processed, 0);
    EXPECT_EQ(report.failures.size(), 2U);
    EXPECT_EQ(contentOf(at("a/3")), "content");
}

}  // namespace
}  // namespace Brimlo
