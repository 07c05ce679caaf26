#include "BrimloCore/UserRules/UserRules.h"

#include "BrimloCore/Support/RuleJson.h"
#include "BrimloCore/UserRules/RuleFile.h"
#include "Support/TempHome.h"

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using namespace std::string_literals;
using Testing::contentOf;
using Testing::exists;

class UserRulesTest : public Testing::TempHome {
protected:
    static CleanupRule rule(const std::string& id) {
        return {
            .id = id,
            .name = "Old logs",
            .group = "Logs",
            .personas = {Persona::general, Persona::video},
            .risk = Risk::rebuild,
            .paths = {"~/logs/*.log"               },
            .regenerates = "The program writes new ones.",
            .officialCommand = "log \"clear\"",
            .quitApps = {"Logger"},
            .contentsOnly = true,
            .excludes = {"keep*"               },
            .minAgeDays = 30,
            .domain = "Custom rules",
            .confidence = Confidence::community,
        };
    }

    static std::string pack(const std::vector<CleanupRule>& rules) {
        Json::Array elements;
        for (const CleanupRule& rule : rules) {
            elements.emplace_back(RuleJson::encode(rule));
        }
        return Json::compact(Json::Object{
            {"pack",  "any"   },
            {"rules", elements}
        });
    }

    std::string folder() const { return at("rules"); }

    UserRules::Loaded load(const std::string& folder = "rules") const {
        return UserRules::load(at(folder));
    }

    static std::vector<std::string> ids(const UserRules::Loaded& loaded) {
        std::vector<std::string> ids;
        for (const CleanupRule& rule : loaded.rules) {
            ids.push_back(rule.id);
        }
        return ids;
    }
};

TEST_F(UserRulesTest, LoadsFilesInTheOrderOfTheirNames) {
    CleanupRule again = rule("custom.b1");
    again.name = "Again";
    write("rules/b.json", pack({rule("custom.b1"), rule("custom.b2")}));
    write("rules/a.json", pack({rule("custom.a"), again}));
    write("rules/B.json", pack({rule("custom.upper")}));
    write("rules/.hidden.json", pack({rule("custom.hidden")}));
    write("rules/empty.json", R"({"pack": "any"})");
    write("rules/null.json", R"({"pack": "any", "rules": null})");
    for (const char* ignored :
         {"c.JSON", "notes.txt", ".json", "json", "d.json~", "inner/e.json"}) {
        write("rules/"s + ignored, pack({rule("custom.ignored")}));
    }
    const UserRules::Loaded loaded = load();
    EXPECT_EQ(
        loaded.rules,
        (std::vector{
            rule("custom.hidden"),
            rule("custom.upper"),
            rule("custom.a"),
            again,
            rule("custom.b1"),
            rule("custom.b2")}));
    EXPECT_EQ(loaded.issues, std::vector<std::string>{});
}

TEST_F(UserRulesTest, TellsWhatIsWrongWithEachFile) {
    ASSERT_EQ(load().issues, std::vector<std::string>{}) << "a missing folder is an empty one";
    const std::string huge = write("rules/y.json", pack({rule("custom.huge")}));
    std::filesystem::resize_file(huge, std::size_t{20} << 20U);
    const std::string good = pack({rule("custom.good")});
    struct Case {
        const char* file;
        std::string content;
        std::string issue;  ///< Its beginning; the words of the parser may follow.
    };
    const Case cases[] = {
        {"a.json", "",                                "not valid JSON: "},
        {"b.json", "{",                               "not valid JSON: "},
        {"c.json", good + "x",                        "not valid JSON: "},
        {"d.json", R"({"pack": ")"s + '\xff' + "\"}", "not valid JSON: "},
        {"e.json", "{\"pack\": \"any\0\"}"s,          "not valid JSON: "},
        {"f.json", std::string(1'000'000,             '['),               "not valid JSON: "},
        {"g.json",        "[]",                                  "not a rule pack: is not an object"                                        },
        {"h.json",        "{}",                                  R"(not a rule pack: field "pack": is missing)"},
        {"i.json",
         R"({"pack": "any", "rules": {}})",                                  R"(not a rule pack: field "rules": is not a list)"                              },
    };
    for (const Case& c : cases) {
        write("rules/"s + c.file, c.content);
    }
    write("rules/good.json", good);
    makeFolder("rules/w.json");
    link("rules/x.json", "nowhere");
    const UserRules::Loaded loaded = load();
    EXPECT_EQ(ids(loaded), std::vector<std::string>{"custom.good"});
    ASSERT_EQ(loaded.issues.size(), std::size(cases) + 3);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_THAT(loaded.issues[i], testing::StartsWith(cases[i].file + ": "s + cases[i].issue));
    }
    EXPECT_EQ(
        std::vector(loaded.issues.end() - 3, loaded.issues.end()),
        (std::vector<std::string>{
            "w.json: could not be read: Is a directory",
            "x.json: could not be read: No such file or directory",
            "y.json: could not be read: File too large"}));
}

TEST_F(UserRulesTest, TellsThePositionOfABadRule) {
    CleanupRule invalid = rule("custom.invalid");
    invalid.name = "";
    invalid.paths = {"~"};
    invalid.contentsOnly = false;
    std::string missing = Json::compact(RuleJson::encode(rule("custom.missing")));
    missing.replace(missing.find("\"risk\""), 6, "\"risk!\"");
    const std::string good = Json::compact(RuleJson::encode(rule("custom.good")));
    const std::string bad = Json::compact(RuleJson::encode(invalid));
    write(
        "rules/a.json",
        R"({"pack": "any", "rules": [)" + good + "," + missing + "," + bad + ",7," + good + "]}");
    const UserRules::Loaded loaded = load();
    EXPECT_EQ(ids(loaded), (std::vector<std::string>{"custom.good", "custom.good"}));
    EXPECT_EQ(
        loaded.issues,
        (std::vector<std::string>{
            R"(a.json rule #1: field "risk": is missing)",
            "a.json custom.invalid: Give the rule a name.; ~: too broad. Point at a specific "
            "folder or file, not the whole disk or your home folder.",
            "a.json rule #3: is not an object"}));

    const auto verdicts = UserRules::validateFile(folder() + "/a.json");
    ASSERT_TRUE(verdicts);
    std::vector<std::string> lines;
    for (const UserRules::FileVerdict& verdict : *verdicts) {
        lines.push_back(verdict.id + " " + std::to_string(verdict.validation.errors.size()));
    }
    EXPECT_EQ(
        lines,
        (std::vector<std::string>{
            "custom.good 0", "rule #1 1", "custom.invalid 2", "rule #3 1", "custom.good 0"}));
}

TEST_F(UserRulesTest, DoesNotWaitForAPipe) {
    makeFolder("rules");
    ASSERT_EQ(mkfifo(at("rules/x.json").c_str(), 0600), 0);
    EXPECT_EQ(
        load().issues, std::vector<std::string>{"x.json: could not be read: Invalid argument"});
}

TEST_F(UserRulesTest, SavesWhatItLoads) {
    ASSERT_TRUE(UserRules::save(rule("custom.a"), at("new/rules")));
    const std::string content = contentOf(at("new/rules/custom.a.json"));
    EXPECT_THAT(content, testing::StartsWith(R"({
  "pack": "custom",
  "rules": [
    {
      "catchAll": false,
      "confidence": "community",)"));
    EXPECT_THAT(
        content, testing::EndsWith("      \"sources\": []\n    }\n  ],\n  \"version\": 1\n}\n"));
    EXPECT_EQ(load("new/rules").rules, std::vector{rule("custom.a")});
    CleanupRule changed = rule("custom.a");
    changed.name = "Tab\t, \"quote\", \\ and \u65e5\u672c";
    changed.minAgeDays = std::nullopt;
    changed.domain = std::nullopt;
    ASSERT_TRUE(UserRules::save(changed, at("new/rules")));
    EXPECT_EQ(load("new/rules").rules, std::vector{changed});
    EXPECT_EQ(Testing::describeTree(at("new/rules")).size(), 2U) << "nothing temporary is left";
}

TEST_F(UserRulesTest, SavesNoRuleThatCouldNotBeLoaded) {
    CleanupRule invalid = rule("custom.a");
    invalid.name = "";
    invalid.regenerates = "";
    const auto refused = UserRules::save(invalid, folder());
    ASSERT_FALSE(refused);
    const Error expected{
        .domain = "Brimlo",
        .code = 10,
        .description =
            "Give the rule a name.\nDescribe in a sentence what happens after deletion (what "
            "recreates it, or that it will be gone)."};
    EXPECT_EQ(refused.error(), expected);
    for (const std::string& id : {"../a"s, "a/b"s, "a\0b"s, "a\n"s, ""s}) {
        EXPECT_FALSE(UserRules::save(rule(id), folder()));
    }
    EXPECT_FALSE(exists(folder()));

    ASSERT_TRUE(UserRules::save(rule("custom.a"), folder()));
    const std::string before = contentOf(at("rules/custom.a.json"));
    CleanupRule noText = rule("custom.a");
    noText.paths = {"~/caf\xe9/x"};
    EXPECT_FALSE(UserRules::save(noText, folder())) << "JSON cannot hold such a name";
    EXPECT_EQ(contentOf(at("rules/custom.a.json")), before);

    write("file", "");
    EXPECT_FALSE(UserRules::save(rule("custom.a"), at("file")));
    makeFolder("rules/custom.b.json/inner");
    EXPECT_FALSE(UserRules::save(rule("custom.b"), folder()));
}

TEST_F(UserRulesTest, RemovesARuleForGood) {
    ASSERT_TRUE(UserRules::save(rule("custom.a"), folder()));
    ASSERT_TRUE(UserRules::save(rule("custom.b"), folder()));
    write("x.json");
    write("rules/inner/y.json");
    for (const std::string& id : {"../x"s, "inner/y"s, ".."s, "a..b"s, "custom.a\0"s}) {
        EXPECT_TRUE(UserRules::remove(id, folder())) << id;
    }
    EXPECT_TRUE(UserRules::remove("custom.a", folder()));
    EXPECT_EQ(ids(load()), std::vector<std::string>{"custom.b"});
    EXPECT_TRUE(exists(at("x.json")) && exists(at("rules/inner/y.json")));
    const auto missing = UserRules::remove("custom.a", folder());
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error(), Error::fromSystem(ENOENT));
}

TEST_F(UserRulesTest, MakesRulesOfDrafts) {
    UserRules::Draft draft{
        .id = "custom.a",
        .name = "Foo",
        .group = "",
        .paths = {at("a/*"), home(), " ~/b "},
        .risk = Risk::safe,
        .regenerates = "Later.",
        .quitApps = {"Bar" },
        .contentsOnly = true,
        .excludes = {"*.x"    },
        .minAgeDays = 3,
        .officialCommand = "foo clean",
        .personas = {Persona::music    },
    };
    const CleanupRule expected{
        .id = "custom.a",
        .name = "Foo",
        .group = "Foo",
        .personas = {Persona::music},
        .risk = Risk::safe,
        .paths = {"~/a/*",        "~", " ~/b "},
        .regenerates = "Later.",
        .officialCommand = "foo clean",
        .quitApps = {"Bar"      },
        .contentsOnly = true,
        .excludes = {"*.x"         },
        .minAgeDays = 3,
        .isCatchAll = false,
        .domain = "Custom rules",
        .confidence = Confidence::community,
        .sources = {    },
    };
    EXPECT_EQ(UserRules::make(draft), expected);
    draft.group = "Group";
    EXPECT_EQ(UserRules::make(draft).group, "Group");
    draft.group = std::nullopt;
    EXPECT_EQ(UserRules::make(draft).group, "Foo");
    draft.id = std::nullopt;
    EXPECT_THAT(UserRules::make(draft).id, testing::MatchesRegex("custom\\.foo-[0-9a-f]{4}"));
}

TEST_F(UserRulesTest, WritesTheHomeFolderAsATilde) {
    const std::pair<std::string, std::string> cases[] = {
        {home(),         "~"           },
        {home() + "/",   "~/"          },
        {at("a/b"),      "~/a/b"       },
        {home() + "bel", home() + "bel"},
        {"/x" + home(),  "/x" + home() },
        {"~/a",          "~/a"         },
        {"",             ""            },
    };
    for (const auto& [path, expected] : cases) {
        EXPECT_EQ(UserRules::tildeForm(path), expected);
    }
}

TEST_F(UserRulesTest, MakesSlugsOfNames) {
    const auto repeated = [](const std::string& text, int count) {
        std::string result;
        for (int i = 0; i < count; ++i) {
            result += text;
        }
        return result;
    };
    const std::pair<std::string, std::string> cases[] = {
        {"  Hello, World!  ",                                 "hello-world"        },
        {"***",                                               "rule"               },
        {"",                                                  "rule"               },
        {"--a--_b\n--",                                       "a-b"                },
        {repeated("a",                                        60),                   repeated("a", 40)},
        {repeated("a",                                                40),                                                                     repeated("a", 40)},
        {repeated("a", 39) + " b",repeated("a", 39) + "-"},
        {repeated("a",                                                   40) + " b",                                                             repeated("a", 40)},
        {"Caf\u00e9 \u00dcber",                                       "caf\u00e9-\u00fcber"                                                                                                             },
        {repeated("e\u0301",                                        41), repeated("e\u0301", 40)},
        {repeated("\u65e5",                                                41),                                                                     repeated("\u65e5", 40)},
        {"\u65e5\u672c\u8a9e \u30ad\u30e3\u30c3\u30b7\u30e5",
         "\u65e5\u672c\u8a9e-\u30ad\u30e3\u30c3\u30b7\u30e5"},
        {"\U0001F389 Party \U0001F468\u200D\U0001F469\u200D\U0001F467!",         "party"           },
        {"\U0001F389",                                                   "rule"                                                       },
        {"\u0661\u0662 \u00bd \u2167",                                  "\u0661\u0662-\u00bd-\u2177"},
        {"a\xff\xfe"
         "b", "a-b"                       },
    };
    for (const auto& [name, slug] : cases) {
        EXPECT_EQ(UserRules::slug(name), slug) << name;
    }
}

TEST_F(UserRulesTest, MakesAnIDOfItsOwnForEachRule) {
    const std::string id = UserRules::newID("Old Logs");
    EXPECT_THAT(id, testing::MatchesRegex("custom\\.old-logs-[0-9a-f]{4}"));
    EXPECT_TRUE(UserRules::isCustom(id));
    EXPECT_FALSE(UserRules::isCustom("Custom.a"));
    EXPECT_FALSE(UserRules::isCustom("customary"));
    std::vector<std::string> more;
    for (int i = 0; i < 5; ++i) {
        more.push_back(UserRules::newID("Old Logs"));
    }
    EXPECT_THAT(more, testing::Contains(testing::Ne(id)));
}

TEST_F(UserRulesTest, KeepsItsFolderToTheOwner) {
    const std::string folder = UserRules::defaultDirectory();
    EXPECT_EQ(folder, at("Library/Application Support/Brimlo/Rules"));
    struct stat status {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

}  // namespace
}  // namespace Brimlo
