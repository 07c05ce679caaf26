#include "BrimloCore/RulePacks/Catalog.h"

#include "BrimloCore/RulePacks/RulePacks.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <set>

namespace Brimlo {
namespace {

using Catalog::UnsupportedSafe;

class CatalogTest : public Testing::TempHome {
protected:
    void writeUserRule(const std::string& file, const CleanupRule& rule) const {
        const Json::Object pack{
            {"pack",  "x"                                },
            {"rules", Json::Array{RuleJson::encode(rule)}}
        };
        write("Library/Application Support/Brimlo/Rules/" + file, Json::compact(pack));
    }

    /// The rows of the packs in the order of the catalog: those that are compiled in come first.
    template <typename T>
    static std::vector<T> compiledFirst(std::vector<T> rows, const std::vector<T>& compiled) {
        std::set<std::string> ids;
        for (const T& row : compiled) {
            ids.insert(row.id);
        }
        std::ranges::stable_partition(rows, [&](const T& row) { return ids.contains(row.id); });
        return rows;
    }

    static CleanupRule userRule(const std::string& id) {
        return {
            .id = id,
            .name = "Mine",
            .risk = Risk::safe,
            .paths = {"~/mine"},
            .regenerates = "It is made again.",
            .confidence = Confidence::unverified,
        };
    }
};

TEST_F(CatalogTest, KeepsEachIDOnce) {
    const auto rule = [](std::string id, std::string name) {
        return CleanupRule{.id = std::move(id), .name = std::move(name)};
    };
    CleanupRule full = rule("a", "full");
    full.excludes = {"x"};
    full.minAgeDays = 3;
    struct Case {
        const char* name;
        std::vector<CleanupRule> rules;
        std::vector<CleanupRule> merged;
    };
    const Case cases[] = {
        {"nothing",                   {},                                                  {}                              },
        {"no repeats",                {rule("b", "1"), rule("a", "2")},                    {rule("b", "1"), rule("a", "2")}},
        {"last content, first place",
         {rule("a", "1"), rule("b", "2"), rule("a", "3"), rule("c", "4"), rule("a", "5")},
         {rule("a", "5"), rule("b", "2"), rule("c", "4")}                                                                  },
        {"nothing is inherited",      {full, rule("a", "bare")},                           {rule("a", "bare")}             },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Catalog::merge(c.rules, UnsupportedSafe::keep), c.merged);
        EXPECT_EQ(Catalog::merge(c.rules, UnsupportedSafe::lowerToRebuild), c.merged);
    }
}

TEST_F(CatalogTest, LowersOnlySafeRulesWithWeakEvidence) {
    for (const Risk risk : kAllRisks) {
        for (const Confidence confidence : kAllConfidences) {
            const CleanupRule rule{.id = "a", .risk = risk, .confidence = confidence};
            const bool isWeak =
                confidence == Confidence::community || confidence == Confidence::unverified;
            CleanupRule lowered = rule;
            lowered.risk = isWeak && risk == Risk::safe ? Risk::rebuild : risk;
            EXPECT_EQ(Catalog::merge({rule}, UnsupportedSafe::keep), std::vector{rule});
            EXPECT_EQ(
                Catalog::merge({rule}, UnsupportedSafe::lowerToRebuild), std::vector{lowered});
        }
    }
}

TEST_F(CatalogTest, JoinsTheCompiledRowsAndThePacks) {
    const RulePacks::Loaded packs = RulePacks::load();
    const std::vector<CleanupRule>& builtIn = Catalog::builtInRules();
    EXPECT_EQ(
        builtIn,
        Catalog::merge(
            compiledFirst(packs.rules, RulePacks::compiledRules()),
            UnsupportedSafe::lowerToRebuild));
    EXPECT_EQ(
        Catalog::artifactPatterns(),
        compiledFirst(packs.artifacts, RulePacks::compiledArtifacts()));
    EXPECT_EQ(Catalog::packIssues(), packs.issues);
    EXPECT_EQ(Catalog::rules(), builtIn) << "there are no rules of the user";
}

TEST_F(CatalogTest, LetsTheUserHaveTheLastWord) {
    std::vector<CleanupRule> expected = Catalog::builtInRules();
    const auto replaced = std::ranges::find_if(expected, [](const CleanupRule& rule) {
        return rule.risk == Risk::rebuild && !isSupported(rule.confidence);
    });
    ASSERT_NE(replaced, expected.end());
    *replaced = userRule(replaced->id);
    replaced->isUsersOwn = true;  // Whatever id it bears.
    writeUserRule("b.json", *replaced);
    writeUserRule("a.json", userRule("custom.mine"));
    writeUserRule("c.json", userRule("bad id"));
    expected.push_back(userRule("custom.mine"));
    expected.back().isUsersOwn = true;
    EXPECT_EQ(Catalog::rules(), expected);
    EXPECT_EQ(
        Catalog::userRuleIssues(),
        std::vector<std::string>{
            "c.json bad id: The rule id may only contain letters, digits, '.', '_' and '-'."});
    ASSERT_TRUE(UserRules::remove("a", UserRules::defaultDirectory()));
    expected.pop_back();
    EXPECT_EQ(Catalog::rules(), expected) << "the folder is read at each call";
}

}  // namespace
}  // namespace Brimlo
