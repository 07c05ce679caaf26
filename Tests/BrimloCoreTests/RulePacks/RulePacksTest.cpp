#include "BrimloCore/RulePacks/RulePacks.h"

#include "BrimloCore/Platform/SystemPaths.h"
#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

class RulePacksTest : public Testing::TempHome {
protected:
    static std::string rule(const std::string& id) {
        return Json::compact(RuleJson::encode(Testing::sampleRule(id)));
    }

    static std::string artifact(const std::string& id) {
        return R"({"id": ")" + id + R"(", "name": "N", "group": "G", "personas": ["general"],)" +
               R"( "risk": 1, "regenerates": "Soon.", "names": ["out"]})";
    }

    template <typename T>
    static Texts ids(const std::vector<T>& elements) {
        Texts ids;
        for (const T& element : elements) {
            ids.push_back(element.id);
        }
        return ids;
    }
};

TEST_F(RulePacksTest, ReadsThePacksOfThisSystemInOrderAndLeavesOutWhatItCannotRead) {
    const std::string upper = R"({"pack": "U", "rules": [)" + rule("u") + "," + rule("u") + "]}";
    const std::string partial = R"({"pack": "P", "artifacts": [{"id": "x"},)" + artifact("a1") +
                                R"(, []], "rules": [)" + rule("r0") + "," + rule("r1") + "," +
                                rule("r2") + R"(, {"id": 7}, )" + rule("r4") + "]}";
    const std::string broken = R"({"pack": "Q", "rules": [)" + rule("lost") + "]";
    const std::string badList =
        R"({"pack": "R", "rules": [)" + rule("lost") + R"(], "artifacts": 1})";
    const auto of = [](std::string_view system, const std::string& id) {
        return R"({"pack": "S", "system": ")" + std::string{system} + R"(", "rules": [)" +
               rule(id) + "]}";
    };
    const std::string here = of(Platform::systemName(), "here");
    const std::string elsewhere = of("elsewhere", "elsewhere");
    const RulePacks::Source sources[] = {
        {"A.json", here     },
        {"E.json", elsewhere},
        {"p.json", partial  },
        {"q.json", broken   },
        {"b.json", badList  },
        {"P.json", upper    },
    };
    const RulePacks::Loaded loaded = RulePacks::load(sources);
    EXPECT_EQ(ids(loaded.rules), (Texts{"u", "u", "r0", "r1", "r2", "r4", "here"}));
    EXPECT_EQ(ids(loaded.artifacts), Texts{"a1"});
    ASSERT_EQ(loaded.issues.size(), 5U);
    EXPECT_THAT(loaded.issues.back(), testing::StartsWith("q.json: not valid JSON: "));
    EXPECT_EQ(
        Texts(loaded.issues.begin(), loaded.issues.end() - 1),
        (Texts{
            R"(b.json: not a rule pack: field "artifacts": is not a list)",
            R"(p.json: rule #3 skipped: field "id": is not a text)",
            R"(p.json: artifact #0 skipped: field "name": is missing)",
            "p.json: artifact #2 skipped: is not an object"}));
}

TEST_F(RulePacksTest, CompilesInTheRowsOfOnePack) {
    const auto source = std::ranges::find(
        RulePacks::embedded(), "audit-builtin.json", &RulePacks::Source::fileName);
    RulePacks::Loaded pack = RulePacks::load({source, std::next(source)});
    for (CleanupRule& rule : pack.rules) {
        rule.domain = std::nullopt;
        rule.confidence = Confidence::unverified;
        rule.sources = {};
        rule.provenOn = {};
        if (rule.isCatchAll) {
            rule.risk = Risk::safe;
            rule.regenerates =
                "Apps rebuild their caches on demand. Apple-owned caches are left alone.";
        }
    }
    for (ArtifactPattern& pattern : pack.artifacts) {
        pattern.provenOn = {};
    }
    EXPECT_EQ(pack.rules.size(), 94U);
    EXPECT_EQ(RulePacks::compiledRules(), pack.rules);
    EXPECT_EQ(RulePacks::compiledArtifacts(), pack.artifacts);
}

}  // namespace
}  // namespace Brimlo
