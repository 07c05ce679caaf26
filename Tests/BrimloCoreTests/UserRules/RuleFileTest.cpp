#include "BrimloCore/UserRules/RuleFile.h"

#include "BrimloCore/UserRules/UserRules.h"
#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <cerrno>
#include <filesystem>

namespace Brimlo {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;
using UserRules::Imported;

const std::string kBadID = "The rule id may only contain letters, digits, '.', '_' and '-'.";

class RuleFileTest : public Testing::TempHome {
protected:
    static CleanupRule rule(const std::string& id) {
        CleanupRule rule = Testing::sampleRule(id);
        rule.isCatchAll = true;
        rule.domain = "Theirs";
        rule.confidence = Confidence::verifiedLocal;
        rule.provenOn = {
            {.system = "linux", .program = "p 1", .date = "2026-03-01"}
        };
        return rule;
    }

    std::expected<Imported, Error> import(
        const std::vector<CleanupRule>& rules, bool allowOverride = false) const {
        const std::string text = UserRules::exportJSON(rules).value_or("");
        return UserRules::importPack(write("pack", text), allowOverride, at("rules"));
    }

    static Imported taken(const Texts& ids) { return {.imported = ids, .rejected = {}}; }
    static Imported refused(const Texts& texts) { return {.imported = {}, .rejected = texts}; }

    std::vector<CleanupRule> stored() const { return UserRules::load(at("rules")).rules; }
};

TEST_F(RuleFileTest, ReplacesAFileOnlyWhenToldAndOnlyAPlainOne) {
    using UserRules::Existing;
    const auto kept = write("kept", "old");
    EXPECT_EQ(
        UserRules::exportTo(kept, {rule("custom.a")}, Existing::keep).error(),
        Error::fromSystem(EEXIST));
    EXPECT_EQ(Testing::contentOf(kept), "old");
    for (const auto& target : {link("link", "kept"), makeFolder("folder"), at("none/x")}) {
        EXPECT_FALSE(UserRules::exportTo(target, {}, Existing::replace)) << target;
    }
    EXPECT_EQ(Testing::describeTree(home()).size(), 4U) << "and nothing is left";
    EXPECT_TRUE(UserRules::exportTo(kept, {rule("custom.a")}, Existing::replace));
    EXPECT_EQ(Testing::contentOf(kept), UserRules::exportJSON({rule("custom.a")}));
}

TEST_F(RuleFileTest, TakesTheRankFromRulesOfOthers) {
    CleanupRule mine = rule("custom.dev-npm-cache");
    mine.isCatchAll = false;
    mine.domain = "Custom rules";
    mine.confidence = Confidence::community;
    mine.provenOn.clear();
    EXPECT_EQ(import({rule("dev.npm.cache")}), taken({mine.id}));
    EXPECT_EQ(stored(), std::vector{mine});
    EXPECT_TRUE(Testing::exists(at("rules/custom.dev-npm-cache.json")));
    EXPECT_EQ(import({rule(mine.id)}), taken({mine.id}));
    EXPECT_EQ(stored(), std::vector{rule(mine.id)}) << "one's own stay as they are";
    EXPECT_EQ(import({rule("a.b")}, true), taken({"a.b"}));
    EXPECT_EQ(stored(), (std::vector{rule("a.b"), rule(mine.id)}));
}

TEST_F(RuleFileTest, TakesHostileIDsAsTexts) {
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"../../config",    "custom.config",   true },
        {"",                "custom.rule",     true },
        {"caf\u00e9",       "custom.cafe",     true },
        {"custom./../../x", "custom./../../x", false},
        {"custom.a\0b"s,    "custom.a\0b"s,    false},
    };
    for (const auto& [id, becomes, isTaken] : cases) {
        SCOPED_TRACE(id);
        std::filesystem::remove_all(at("rules"));
        EXPECT_EQ(
            import({rule(id)}), isTaken ? taken({becomes}) : refused({becomes + ": " + kBadID}));
        EXPECT_EQ(stored().size(), isTaken ? 1U : 0U);
    }
    EXPECT_FALSE(import({rule("custom." + std::string(300, 'x'))})) << "no name of a file";
    EXPECT_EQ(import({rule("../x")}, true), refused({"../x: " + kBadID}));
    std::filesystem::remove_all(at("rules"));
    std::filesystem::remove(at("rules.lock"));
    EXPECT_EQ(Testing::describeTree(home()).size(), 2U) << "all went into the folder";
}

TEST_F(RuleFileTest, SavesInOrderUntilOneFails) {
    const std::string id = "custom." + std::string(40, 'x');
    CleanupRule last = rule(id);
    last.name = "Last";
    EXPECT_EQ(import({rule(std::string(41, 'x')), last}), taken({id, id}));
    EXPECT_EQ(stored(), std::vector{last}) << "the later of two with one id";
    makeFolder("rules/custom.b.json");
    EXPECT_FALSE(import({rule("custom." + std::string(300, 'x')), rule("custom.d")}));
    EXPECT_EQ(stored(), std::vector{last}) << "none, when one can't be written";
    EXPECT_FALSE(import({rule("custom.a"), rule("custom.b"), rule("custom.c")}));
    EXPECT_EQ(stored(), (std::vector{rule("custom.a"), last}));
}

TEST_F(RuleFileTest, FailsAsAWholeForWhatIsNoPack) {
    const auto result = UserRules::importPack(write("pack", "[]"), false, at("rules"));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().description, "not a rule pack: is not an object");
    std::filesystem::resize_file(write("pack"), 17'000'000);
    for (const char* file : {"pack", "missing", "rules"}) {
        EXPECT_FALSE(UserRules::importPack(at(file), false, at("rules")));
    }
    EXPECT_FALSE(Testing::exists(at("rules")));
    EXPECT_EQ(import({}), taken({}));
}

}  // namespace
}  // namespace Brimlo
