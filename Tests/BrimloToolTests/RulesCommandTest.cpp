#include "BrimloToolTests/ToolTest.h"

#include <sys/stat.h>

namespace Brimlo::Testing {

namespace {

class RulesCommandTest : public ToolTest {
protected:
    /// The text of a rule file with one element.
    static std::string pack(const std::string& element) {
        return R"({"pack":"custom","version":1,"rules":[)" + element + "]}";
    }

    static std::string rule(const std::string& id, const std::string& path) {
        return R"({"id":")" + id + R"(","name":"N","group":"G","personas":["general"],)" +
               R"("risk":"safe","paths":[")" + path +
               R"("],"regenerates":"The app makes it again."})";
    }
};

TEST_F(RulesCommandTest, JudgesAndTriesFiles) {
    write("cache/a", "content");
    write("good", pack(rule("custom.good", "~/cache/a")));
    write("bad", pack(rule("custom.bad", "/etc/x") + "," + rule("custom.good", "~/cache/a")));
    write("element", pack("5"));
    write("empty", pack(""));
    write("cut", pack("").substr(0, 20));
    write("bytes", pack(R"("\xff")"));
    write("huge", std::string(17'000'000, ' '));
    makeFolder("folder");
    mkfifo(at("pipe").c_str(), 0600);

    const std::string clear = R"("errors":[],"warnings":[]})";
    const std::string good = R"({"id":"custom.good",)" + clear;
    const std::string bad =
        R"({"id":"custom.bad","errors":["/etc/x: Brimlo never deletes this location )"
        R"((outside user-owned locations)."],"warnings":[]})";
    const std::string item = R"({"id":"custom.good","items":[{"path":")" + at("cache/a") +
                             R"(","size":4096,"idleDays":0}]})";
    const std::string none = R"({"id":"custom.bad","items":[]})";
    struct Case {
        std::string file;
        int exitCode;
        std::string verdicts;  ///< Of `validate`; empty when the file can't be read at all.
        std::string preview;
    };
    const Case cases[] = {
        {"good",    0, "[" + good + "]",                                                    "[" + item + "]"             },
        {"bad",     1, "[" + bad + "," + good + "]",                                        "[" + none + "," + item + "]"},
        {"element", 1, R"([{"id":"rule #0","errors":["is not an object"],"warnings":[]}])", "[]"                         },
        {"empty",   0, "[]",                                                                "[]"                         },
        {"cut",     1, "",                                                                  ""                           },
        {"bytes",   1, "",                                                                  ""                           },
        {"huge",    1, "",                                                                  ""                           },
        {"folder",  1, "",                                                                  ""                           },
        {"pipe",    1, "",                                                                  ""                           },
        {"missing", 1, "",                                                                  ""                           },
    };
    const auto line = [](const std::string& text) { return text.empty() ? "" : text + "\n"; };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const Outcome verdicts = run({"rules", "validate", c.file, "--json"});
        EXPECT_EQ(verdicts.exitCode, c.exitCode);
        EXPECT_EQ(verdicts.out, line(c.verdicts));
        const Outcome preview = run({"rules", "preview", c.file, "--json"});
        EXPECT_EQ(preview.exitCode, c.file == "bad" ? 0 : c.exitCode);
        EXPECT_EQ(preview.out, line(c.preview));
        if (c.verdicts.empty()) {
            const std::string sentence =
                "brimlo: " + c.file + ": (could not be read|not valid JSON): [^\n]+\\.\n";
            EXPECT_THAT(verdicts.err, testing::MatchesRegex(sentence));
            EXPECT_EQ(preview.err, verdicts.err);
        }
    }
}

TEST_F(RulesCommandTest, ListsRulesOfOnesOwnAndWhatIsWrongWithThem) {
    const std::size_t builtIn = answer({"rules", "list"}).at("rules").as_array().size();
    write(support("Rules/good.json"), pack(rule("custom.good", "~/cache/a")));
    const Json::Value list = answer({"rules", "list"});
    EXPECT_EQ(list.at("rules").as_array().size(), builtIn + 1);
    EXPECT_EQ(Json::compact(list.at("issues")), "[]");

    write(support("Rules/broken.json"), "[");
    const std::string issue = "broken.json: not valid JSON: incomplete JSON at byte 1";
    const Json::Value damaged = answer({"rules", "list"}, 1, "brimlo: " + issue + ".\n");
    EXPECT_EQ(damaged.at("rules"), list.at("rules"));
    EXPECT_EQ(Json::compact(damaged.at("issues")), "[\"" + issue + "\"]");
    const Outcome suggest = run({"suggest", "--json"});
    EXPECT_EQ(
        suggest, (Outcome{0, "[]\n", "brimlo: a rule of yours is left out: " + issue + ".\n"}));
}

TEST_F(RulesCommandTest, SwitchesRules) {
    write(".npm/_cacache/a", std::string(5'000, 'a'));
    const auto isEnabled = [] {
        const Json::Value list = answer({"rules", "list"});
        for (const Json::Value& rule : list.at("rules").as_array()) {
            if (rule.at("id") == "npm.cache") {
                return rule.at("enabled").as_bool();
            }
        }
        return false;
    };
    EXPECT_EQ(run({"rules", "disable", "npm.cache"}), (Outcome{0, "npm.cache is off.\n", ""}));
    EXPECT_FALSE(isEnabled());
    EXPECT_EQ(Json::compact(answer({"suggest"})), "[]");
    EXPECT_EQ(run({"rules", "enable", "npm.cache"}), (Outcome{0, "npm.cache is on.\n", ""}));
    EXPECT_TRUE(isEnabled());
    EXPECT_EQ(answer({"suggest"}).as_array().size(), 1);
    // The id of a rule that is gone can still be switched on.
    write(support("disabled-rules.json"), R"(["gone.rule"])");
    EXPECT_EQ(run({"rules", "disable", "no.rule"}).exitCode, 2);
    EXPECT_EQ(run({"rules", "enable", "gone.rule"}).exitCode, 0);
    EXPECT_EQ(contentOf(at(support("disabled-rules.json"))), "[]");
}

TEST_F(RulesCommandTest, DeletesOnlyRulesOfOnesOwn) {
    const std::string mine = write(support("Rules/custom.mine.json"), pack(""));
    const std::string config = write(support("config.json"), "{}");
    struct Case {
        std::string id;
        Outcome outcome;
    };
    const Case cases[] = {
        {"npm.cache",
         {2, "", "brimlo: \"npm.cache\" is no rule of yours: they begin with \"custom.\".\n"}    },
        {"custom.none",          {2, "", "brimlo: No rule is called \"custom.none\".\n"}         },
        {"custom./../../config", {2, "", "brimlo: No rule is called \"custom./../../config\".\n"}},
        {"custom.mine",          {0, "Deleted custom.mine.\n", ""}                               },
        {"custom.mine",          {2, "", "brimlo: No rule is called \"custom.mine\".\n"}         },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        EXPECT_EQ(run({"rules", "delete", c.id}), c.outcome);
    }
    EXPECT_FALSE(exists(mine));
    EXPECT_TRUE(exists(config));
}

}  // namespace

}  // namespace Brimlo::Testing
