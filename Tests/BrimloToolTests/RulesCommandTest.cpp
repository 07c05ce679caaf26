#include "BrimloToolTests/ToolTest.h"

#include <gmock/gmock.h>

namespace Brimlo::Testing {

namespace {

class RulesCommandTest : public ToolTest {};

TEST_F(RulesCommandTest, JudgesAndTriesFiles) {
    write("good", pack(rule("custom.good", "~/cache/a")));
    write("bad", pack(rule("custom.bad", "/etc/x")));
    EXPECT_EQ(
        Json::compact(answer({"rules", "validate", "good"})),
        R"([{"id":"custom.good","errors":[],"warnings":[]}])");
    EXPECT_EQ(run({"rules", "validate", "bad"}).exitCode, 1);
    EXPECT_EQ(
        Json::compact(answer({"rules", "preview", "bad"})), R"([{"id":"custom.bad","items":[]}])");
    write("cut", "{");
    for (const std::string file : {"cut", "missing"}) {
        const Outcome outcome = run({"rules", "validate", file});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.err, testing::MatchesRegex("brimlo: " + file + ": [^\n]+\\.\n"));
    }
}

TEST_F(RulesCommandTest, CarriesRulesFromOneMachineToAnother) {
    write("theirs", pack(rule("a.b", "~/cache/a") + "," + rule("bad", "/") + ",7"));
    EXPECT_EQ(
        Json::compact(answer({"rules", "import", "theirs"}, 1)),
        R"({"imported":["custom.a-b"],"rejected":["custom.bad: /: too broad. Point at a specific )"
        R"(folder or file, not the whole disk or your home folder.","rule #2: is not an object"]})");
    const std::string file = at(support("Rules/custom.a-b.json"));
    const std::string before = contentOf(file);
    write("mine", "old");
    EXPECT_EQ(
        run({"rules", "export", "mine"}).err,
        "brimlo: The export to mine failed: File exists; --force replaces it.\n");
    EXPECT_EQ(contentOf(at("mine")), "old");
    EXPECT_EQ(run({"rules", "export", "mine", "--force"}), (Outcome{0, "Exported 1 rule.\n", ""}));
    EXPECT_EQ(run({"rules", "export"}), (Outcome{0, contentOf(at("mine")), ""}));
    link("link", "mine");
    EXPECT_EQ(run({"rules", "export", "link", "--force"}).exitCode, 1);
    EXPECT_EQ(Json::compact(answer({"rules", "export", "new"})), R"({"path":"new","rules":1})");
    EXPECT_EQ(run({"rules", "delete", "custom.a-b"}).exitCode, 0);
    EXPECT_EQ(run({"rules", "import", "new"}).out, "imported  custom.a-b\nImported 1 rule.\n");
    EXPECT_EQ(contentOf(file), before);
}

TEST_F(RulesCommandTest, DeletesOnlyRulesOfOnesOwn) {
    const std::string mine = write(support("Rules/custom.mine.json"), pack(""));
    const std::string config = write(support("config.json"), "{}");
    const std::pair<std::string, Outcome> cases[] = {
        {"npm.cache",
         {2, "", "brimlo: \"npm.cache\" is not one of your rules: they begin with \"custom.\".\n"}},
        {"custom./../../config", {2, "", "brimlo: No rule is called \"custom./../../config\".\n"} },
        {"custom.mine",          {0, "Deleted custom.mine.\n", ""}                                },
        {"custom.mine",          {2, "", "brimlo: No rule is called \"custom.mine\".\n"}          },
    };
    for (const auto& [id, outcome] : cases) {
        EXPECT_EQ(run({"rules", "delete", id}), outcome) << id;
    }
    EXPECT_FALSE(exists(mine));
    EXPECT_TRUE(exists(config));
}

}  // namespace

}  // namespace Brimlo::Testing
