#include "BrimloCore/RulePacks/Catalog.h"

#include "BrimloCore/Catalog/CatalogCreative.h"
#include "BrimloCore/Catalog/CatalogDeveloper.h"
#include "BrimloCore/Catalog/CatalogGeneral.h"
#include "BrimloCore/RulePacks/RulePacks.h"
#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <unordered_map>

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

    /// The compiled tables in the order of the catalog.
    static std::vector<CleanupRule> compiledRules() {
        std::vector<CleanupRule> rules = CatalogGeneral::all();
        for (const auto& table : {CatalogDeveloper::all(), CatalogCreative::all()}) {
            rules.insert(rules.end(), table.begin(), table.end());
        }
        return rules;
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
        {"letter case counts",        {rule("a", "1"), rule("A", "2")},                    {rule("a", "1"), rule("A", "2")}},
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
            SCOPED_TRACE(std::string{rawValue(risk)} + " " + std::string{rawValue(confidence)});
            const CleanupRule rule{.id = "a", .risk = risk, .confidence = confidence};
            const bool isWeak =
                confidence == Confidence::community || confidence == Confidence::unverified;
            CleanupRule lowered = rule;
            lowered.risk = isWeak && risk == Risk::safe ? Risk::rebuild : risk;
            const std::vector rules{rule};
            EXPECT_EQ(Catalog::merge(rules, UnsupportedSafe::keep), rules);
            EXPECT_EQ(Catalog::merge(rules, UnsupportedSafe::lowerToRebuild), std::vector{lowered});
        }
    }
}

TEST_F(CatalogTest, JoinsTheTablesAndThePacks) {
    const RulePacks::Loaded packs = RulePacks::load();
    const std::vector<CleanupRule>& builtIn = Catalog::builtInRules();
    EXPECT_EQ(Catalog::packNames(), packs.names);
    EXPECT_EQ(Catalog::packIssues(), packs.issues);
    EXPECT_EQ(Catalog::rules(), builtIn) << "there are no rules of the user";

    std::unordered_map<std::string, std::vector<CleanupRule>> byID;
    for (const CleanupRule& rule : builtIn) {
        byID[rule.id].push_back(rule);
        EXPECT_FALSE(rule.risk == Risk::safe && !isSupported(rule.confidence)) << rule.id;
    }
    for (CleanupRule rule : packs.rules) {
        if (rule.risk == Risk::safe && !isSupported(rule.confidence)) {
            rule.risk = Risk::rebuild;
        }
        EXPECT_EQ(byID[rule.id], std::vector{rule}) << rule.id;
    }
    const std::vector<CleanupRule> compiled = compiledRules();
    for (std::size_t i = 0; i < compiled.size(); ++i) {
        EXPECT_EQ(builtIn.at(i).id, compiled[i].id) << "a table's rule keeps its place";
    }
    EXPECT_EQ(std::ranges::count_if(builtIn, &CleanupRule::isCatchAll), 1);
}

TEST_F(CatalogTest, CompilesInWhatThePackHolds) {
    const std::vector<CleanupRule> compiled = compiledRules();
    EXPECT_EQ(CatalogGeneral::all().size(), 23U);
    EXPECT_EQ(CatalogDeveloper::all().size(), 49U);
    EXPECT_EQ(CatalogCreative::all().size(), 22U);
    const RulePacks::Loaded packs = RulePacks::load();
    for (const CleanupRule& rule : compiled) {
        SCOPED_TRACE(rule.id);
        const auto inPack = std::ranges::find(packs.rules, rule.id, &CleanupRule::id);
        ASSERT_NE(inPack, packs.rules.end());
        // What the words are may differ, and the evidence is the pack's alone.
        CleanupRule expected = *inPack;
        expected.name = rule.name;
        expected.regenerates = rule.regenerates;
        expected.risk = rule.isCatchAll ? Risk::safe : expected.risk;
        expected.domain = std::nullopt;
        expected.confidence = Confidence::unverified;
        expected.sources = {};
        EXPECT_EQ(rule, expected);
    }
    EXPECT_EQ(ArtifactCatalog::builtIn().size(), 16U);
    for (const ArtifactPattern& pattern : ArtifactCatalog::builtIn()) {
        SCOPED_TRACE(pattern.id);
        const auto inPack = std::ranges::find(packs.artifacts, pattern.id, &ArtifactPattern::id);
        ASSERT_NE(inPack, packs.artifacts.end());
        ArtifactPattern expected = *inPack;
        expected.name = pattern.name;
        expected.regenerates = pattern.regenerates;
        EXPECT_EQ(pattern, expected);
    }
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

TEST_F(CatalogTest, KeepsEachArtifactPatternOnce) {
    const std::vector<ArtifactPattern>& all = Catalog::artifactPatterns();
    std::unordered_map<std::string, std::vector<ArtifactPattern>> byID;
    for (const ArtifactPattern& pattern : all) {
        byID[pattern.id].push_back(pattern);
    }
    for (const ArtifactPattern& pattern : RulePacks::load().artifacts) {
        EXPECT_EQ(byID[pattern.id], std::vector{pattern});
    }
    const std::vector<ArtifactPattern>& builtIn = ArtifactCatalog::builtIn();
    for (std::size_t i = 0; i < builtIn.size(); ++i) {
        EXPECT_EQ(all.at(i).id, builtIn[i].id);
        EXPECT_EQ(byID[builtIn[i].id].size(), 1U);
    }
    EXPECT_EQ(Catalog::artifactPatternCount(), all.size());
    const auto summaries = Catalog::artifactSummaries();
    ASSERT_EQ(summaries.size(), all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(summaries[i].id, all[i].id);
        EXPECT_EQ(summaries[i].name, all[i].name);
        EXPECT_EQ(summaries[i].group, all[i].group);
        EXPECT_EQ(summaries[i].personas, all[i].personas);
        EXPECT_EQ(summaries[i].risk, all[i].risk);
    }
}

}  // namespace
}  // namespace Brimlo
