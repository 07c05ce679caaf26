#include "BrimloCore/RulePacks/Coverage.h"

#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <algorithm>

namespace Brimlo {
namespace {

class CoverageTest : public Testing::TempHome {
protected:
    /// Writes a rule of the user and returns what the catalog then holds of its tool.
    CoverageEntry entryWith(const CleanupRule& rule) const {
        write("Library/Application Support/Brimlo/Rules/x.json", Testing::packOf(rule));
        const std::vector<CoverageEntry> entries = Coverage::entries();
        const auto entry = std::ranges::find(entries, rule.group, &CoverageEntry::tool);
        return entry == entries.end() ? CoverageEntry{} : *entry;
    }
};

// That docs/coverage.md is what the program writes is checked by tools/lint-rules.
TEST_F(CoverageTest, CountsTheUsersRulesOnlyInTheirPlace) {
    EXPECT_EQ(entryWith(Testing::sampleRule("custom.mine")), CoverageEntry{});
    const std::pair<Confidence, std::string_view> cases[] = {
        {Confidence::verifiedLocal, "Supported" },
        {Confidence::documented,    "Supported" },
        {Confidence::community,     "Community" },
        {Confidence::unverified,    "Unverified"},
    };
    for (const auto& [confidence, supportWord] : cases) {
        CleanupRule rule = Testing::sampleRule("npm.cache");
        rule.personas = {Persona::science, Persona::general};
        rule.confidence = confidence;
        const CoverageEntry entry = entryWith(rule);
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
