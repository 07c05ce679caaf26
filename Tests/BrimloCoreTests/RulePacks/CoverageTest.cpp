#include "BrimloCore/RulePacks/Coverage.h"

#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/Support/RuleJson.h"
#include "Support/TempHome.h"

#include <algorithm>

namespace Brimlo {
namespace {

class CoverageTest : public Testing::TempHome {
protected:
    /// Writes a rule of the user and returns what the catalog then holds of its tool.
    CoverageEntry entryWith(const CleanupRule& rule) const {
        const Json::Object pack{
            {"pack",  "x"                                },
            {"rules", Json::Array{RuleJson::encode(rule)}}
        };
        write("Library/Application Support/Brimlo/Rules/x.json", Json::compact(pack));
        const std::vector<CoverageEntry> entries = Coverage::entries();
        const auto entry = std::ranges::find(entries, rule.group, &CoverageEntry::tool);
        return entry == entries.end() ? CoverageEntry{} : *entry;
    }

    static CleanupRule rule(std::string id, Confidence confidence) {
        return {
            .id = std::move(id),
            .name = "Mine",
            .group = "A Tool Of Mine",
            .personas = {Persona::science, Persona::general},
            .risk = Risk::safe,
            .paths = {"~/mine"},
            .regenerates = "It is made again.",
            .confidence = confidence,
        };
    }
};

// That docs/coverage.md is what the program writes is checked by tools/lint-rules.
TEST_F(CoverageTest, CountsEveryRowOnce) {
    std::size_t rules = 0;
    std::size_t artifacts = 0;
    const std::vector<CoverageEntry> entries = Coverage::entries();
    for (const CoverageEntry& entry : entries) {
        SCOPED_TRACE(entry.tool);
        rules += entry.ruleCount;
        artifacts += entry.artifactCount;
        EXPECT_FALSE(entry.personas.empty() || entry.risks.empty());
        if (entry.ruleCount == 0) {
            EXPECT_EQ(entry.domain, "General");
            EXPECT_EQ(Coverage::supportWord(entry), "Unverified");
        }
    }
    EXPECT_EQ(rules, Catalog::builtInRules().size());
    EXPECT_EQ(artifacts, Catalog::artifactPatterns().size());
    EXPECT_TRUE(std::ranges::is_sorted(entries, {}, &CoverageEntry::domain));
}

TEST_F(CoverageTest, CountsTheUsersRulesOnlyInTheirPlace) {
    EXPECT_EQ(entryWith(rule("custom.mine", Confidence::documented)), CoverageEntry{});
    const std::pair<Confidence, std::string_view> cases[] = {
        {Confidence::verifiedLocal, "Supported" },
        {Confidence::documented,    "Supported" },
        {Confidence::community,     "Community" },
        {Confidence::unverified,    "Unverified"},
    };
    for (const auto& [confidence, supportWord] : cases) {
        const CoverageEntry entry = entryWith(rule("npm.cache", confidence));
        const CoverageEntry expected{
            .tool = "A Tool Of Mine",
            .domain = "General",
            .ruleCount = 1,
            .bestConfidence = confidence,
            .personas = {Persona::general, Persona::science},
            .risks = {Risk::safe},
        };
        EXPECT_EQ(entry, expected);
        EXPECT_EQ(Coverage::supportWord(entry), supportWord);
    }
}

}  // namespace
}  // namespace Brimlo
