#include "BrimloCore/RulePacks/Catalog.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCore/UserRules/UserRules.h"
#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <algorithm>

namespace Brimlo {
namespace {

using Catalog::UnsupportedSafe;

class CatalogTest : public Testing::TempHome {
protected:
    void writeUserRule(const std::string& file, const CleanupRule& rule) const {
        write("Library/Application Support/Brimlo/Rules/" + file, Testing::packOf(rule));
    }

    static CleanupRule userRule(const std::string& id) {
        CleanupRule rule = Testing::sampleRule(id);
        rule.confidence = Confidence::unverified;
        return rule;
    }
};

TEST_F(CatalogTest, KeepsEachIDOnce) {
    const auto rule = [](std::string id, std::string name) {
        return CleanupRule{.id = std::move(id), .name = std::move(name)};
    };
    CleanupRule full = rule("a", "full");
    full.excludes = {"x"};
    full.minAgeDays = 3;
    EXPECT_EQ(
        Catalog::merge(
            {rule("a", "1"), rule("b", "2"), rule("a", "3"), rule("c", "4"), full},
            UnsupportedSafe::keep),
        (std::vector{full, rule("b", "2"), rule("c", "4")}));
    EXPECT_EQ(
        Catalog::merge({full, rule("a", "bare")}, UnsupportedSafe::keep),
        std::vector{rule("a", "bare")});
}

TEST_F(CatalogTest, LowersOnlySafeRulesWithWeakEvidence) {
    for (const Risk risk : kAllRisks) {
        for (const Confidence confidence : kAllConfidences) {
            const CleanupRule rule{.id = "a", .risk = risk, .confidence = confidence};
            const bool isWeak =
                confidence == Confidence::community || confidence == Confidence::unverified;
            CleanupRule lowered = rule;
            CleanupRule proven = rule;
            proven.provenOn = {
                {.system = std::string{Platform::systemName()}, .program = "p 1", .date = "d"}
            };
            CleanupRule provenElsewhere = rule;
            provenElsewhere.provenOn = {
                {.system = "elsewhere", .program = "p 1", .date = "d"}
            };
            lowered.risk = isWeak && risk == Risk::safe ? Risk::rebuild : risk;
            EXPECT_EQ(Catalog::merge({rule}, UnsupportedSafe::keep), std::vector{rule});
            EXPECT_EQ(
                Catalog::merge({rule}, UnsupportedSafe::lowerToRebuild), std::vector{lowered});
            EXPECT_EQ(
                Catalog::merge({proven}, UnsupportedSafe::lowerToRebuild), std::vector{proven});
            EXPECT_EQ(
                Catalog::merge({provenElsewhere}, UnsupportedSafe::lowerToRebuild).front().risk,
                lowered.risk);
        }
    }
}

TEST_F(CatalogTest, SaysWhatIsKnownOnThisSystem) {
    const std::string here{Platform::systemName()};
    const std::string label{Platform::systemLabel()};
    const std::string unproven = " No experiment on " + label + " has proven it yet.";
    CleanupRule rule{.id = "a", .confidence = Confidence::community};
    EXPECT_EQ(Catalog::evidence(rule), "Widely reported." + unproven);
    rule.provenOn = {
        {.system = "elsewhere", .program = "p 1", .date = "2026-03-01"}
    };
    EXPECT_EQ(Catalog::evidence(rule), "Widely reported." + unproven);
    rule.provenOn.push_back({.system = here, .program = "q 2", .date = "2026-03-02"});
    EXPECT_EQ(
        Catalog::evidence(rule),
        "Proven on " + label +
            " by experiment, with q 2 (2026-03-02): used, cleaned, and "
            "used again.");
    EXPECT_EQ(
        Catalog::evidence(ArtifactPattern{.provenOn = rule.provenOn}), Catalog::evidence(rule));
    rule.isUsersOwn = true;
    EXPECT_EQ(Catalog::evidence(rule), "");
}

TEST_F(CatalogTest, LetsTheUserHaveTheLastWord) {
    // What broad rules leave to others follows the user's rules, too.
    const auto plain = [](std::vector<CleanupRule> rules) {
        for (CleanupRule& rule : rules) {
            if (rule.isCatchAll) {
                rule.excludes.clear();
            }
        }
        return rules;
    };
    std::vector<CleanupRule> expected = plain(Catalog::builtInRules());
    EXPECT_TRUE(std::ranges::all_of(expected, [](const CleanupRule& rule) {
        return rule.risk != Risk::safe || isSupported(rule.confidence) || !rule.provenOn.empty();
    }));
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
    EXPECT_EQ(plain(Catalog::rules()), expected);
    EXPECT_EQ(
        Catalog::userRuleIssues(),
        std::vector<std::string>{
            "c.json bad id: The rule id may only contain letters, digits, '.', '_' and '-'."});
    ASSERT_TRUE(UserRules::remove("a", UserRules::defaultDirectory()));
    expected.pop_back();
    EXPECT_EQ(plain(Catalog::rules()), expected) << "the folder is read at each call";
}

TEST_F(CatalogTest, KnowsTheRulesOfThisSystem) {
    CleanupRule own{.id = "own", .paths = {"~/Library/x"}};
    own.isUsersOwn = true;
    const CleanupRule macs{
        .id = "mac", .paths = {"~/Library/x", "/Applications/y"}
    };
    const CleanupRule here{
        .id = "here", .paths = {"~/.var/app/x", "~/snap/y"}
    };
    const CleanupRule both{
        .id = "both", .paths = {"~/Library/x", "~/.var/app/x"}
    };
    EXPECT_EQ(
        Catalog::ofThisSystem({own, macs, here, both}),
        (std::vector{own, Platform::systemName() == "linux" ? here : macs, both}));
}

TEST_F(CatalogTest, LeavesToEachRuleTheFoldersOfWhichItKnowsAPart) {
    CleanupRule mine = userRule("custom.mine");
    mine.paths = {"~/Library/Caches/Mine/deep/part", "~/Library/Caches/*/any", "~/Other/x"};
    writeUserRule("mine.json", mine);
    const std::vector<CleanupRule> rules = Catalog::rules();
    const auto broad = std::ranges::find(rules, "general.app-caches", &CleanupRule::id);
    ASSERT_NE(broad, rules.end());
    EXPECT_EQ(std::ranges::count(broad->excludes, "Mine"), 1);
    EXPECT_EQ(std::ranges::count(broad->excludes, "*"), 0);
    EXPECT_EQ(std::ranges::count(broad->excludes, "x"), 0);
    EXPECT_EQ(std::ranges::count(broad->excludes, "com.apple.*"), 1);
}

}  // namespace
}  // namespace Brimlo
