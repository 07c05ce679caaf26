#include "BrimloCore/UserRules/RuleValidation.h"

#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <tuple>

namespace Brimlo {
namespace {

using namespace std::string_literals;

using Texts = std::vector<std::string>;

const std::string kBadID = "The rule id may only contain letters, digits, '.', '_' and '-'.";
const std::string kNoName = "Give the rule a name.";
const std::string kNoSentence =
    "Describe in a sentence what happens after deletion (what recreates it, or that it will be "
    "gone).";
const std::string kNotFull = ": use a full path starting with ~/ or /.";
const std::string kParent = ": '..' is not allowed.";
const std::string kTooBroad =
    ": too broad. Point at a specific folder or file, not the whole disk or your home folder.";
const std::string kMustBeReview =
    "Rules that match everything inside Documents, Desktop, Downloads, Pictures, Movies or Music "
    "must be rated Review.";
const std::string kListsEverything =
    " lists everything inside a personal folder. Treat this rule as Review and check the list "
    "carefully.";
const std::string kRemovesEverything =
    "Contents-only on a personal folder removes everything inside it.";

std::string inside(const std::string& path, const std::string& reason) {
    return path + ": matches inside a location Brimlo never touches (" + reason + ").";
}

std::string never(const std::string& path, const std::string& reason) {
    return path + ": Brimlo never deletes this location (" + reason + ").";
}

class RuleValidationTest : public Testing::TempHome {
protected:
    static void expectVerdict(const CleanupRule& rule, const Texts& errors, const Texts& warnings) {
        const RuleValidation verdict = UserRules::validate(rule);
        EXPECT_EQ(verdict.errors, errors);
        EXPECT_EQ(verdict.warnings, warnings);
        EXPECT_EQ(verdict.isValid(), errors.empty());
    }
};

TEST_F(RuleValidationTest, JudgesTheTextsOfARule) {
    const auto id = &CleanupRule::id;
    const auto name = &CleanupRule::name;
    const auto regenerates = &CleanupRule::regenerates;
    const std::string eightLetters = "e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301";
    const std::tuple<std::string CleanupRule::*, std::string, Texts> cases[] = {
        {id,          "9A.z_-",            {}           },
        {id,          "",                  {kBadID}     },
        {id,          "a\0"s,              {kBadID}     },
        {id,          "caf\u00e9",         {kBadID}     },
        {name,        " \t ",              {kNoName}    },
        {name,        "\n",                {}           },
        {regenerates, "012345678",         {kNoSentence}},
        {regenerates, eightLetters + "9.", {}           },
    };
    for (const auto& [field, text, errors] : cases) {
        SCOPED_TRACE(text);
        CleanupRule rule = Testing::sampleRule("custom.a");
        rule.*field = text;
        expectVerdict(rule, errors, {});
    }
    CleanupRule noPath = Testing::sampleRule("custom.a");
    noPath.paths = {};
    expectVerdict(noPath, {"Add at least one path."}, {});
}

TEST_F(RuleValidationTest, JudgesEachPath) {
    link("shortcut", at(".ssh"));
    makeFolder(".ssh");
    const std::string outside = "outside user-owned locations";
    link("letters", makeFolder("Documents"));
    const std::string linked = "reached through a link into a protected location";
    const std::string credentials = "holds credentials, settings or agent memory";
    const std::string profile = "~/.mozilla/firefox/*/";
    write(".config/user-dirs.dirs", "XDG_VIDEOS_DIR=\"$HOME/Filme\"");
    const std::string tooLong = "~/" + std::string(200'000, 'x');
    const std::tuple<std::string, Texts, Texts> cases[] = {
        {"~/.cache/thing/",    {},                                           {}                                     },
        {"  ~/.cache/thing\t", {},                                           {}                                     },
        {"",                   {"A path is empty."},                         {}                                     },
        {"  foo ",             {"foo" + kNotFull},                           {}                                     },
        {"~/a/../b",           {"~/a/../b" + kParent},                       {}                                     },
        {"~",                  {"~" + kTooBroad},                            {}                                     },
        {home(),               {home() + kTooBroad},                         {}                                     },
        {"/etc/hosts",         {never("/etc/hosts", outside)},               {}                                     },
        {"~/.SSH/*",           {inside("~/.SSH/*", credentials)},            {}                                     },
        {"~/shortcut/*",       {inside("~/shortcut/*", credentials)},        {}                                     },
        {"~/a\0b"s,            {never("~/a\0b"s, outside)},                  {}                                     },
        {"~/Documents/a?/b",   {kMustBeReview},                              {"~/Documents/a?/b" + kListsEverything}},
        {"~/\\Documents/*",    {kMustBeReview},                              {"~/\\Documents/*" + kListsEverything} },
        {"~/\\.ssh/*",         {inside("~/\\.ssh/*", credentials)},          {}                                     },
        {"~/letters/*",        {inside("~/letters/*", linked)},              {}                                     },
        {"~/Filme/*",          {kMustBeReview},                              {"~/Filme/*" + kListsEverything}       },
        {profile + "key4.db",  {inside(profile + "key4.db", credentials)},   {}                                     },
        {tooLong,              {"A path is longer than the system allows."}, {}                                     },
    };
    for (const auto& [path, errors, warnings] : cases) {
        SCOPED_TRACE(path);
        CleanupRule rule = Testing::sampleRule("custom.a");
        rule.paths = {path};
        expectVerdict(rule, errors, warnings);
    }
    CleanupRule conditional = Testing::sampleRule("custom.a");
    conditional.conditions = {
        .beside = {"Local State", "a/b"},
          .owners = {"~/apps", "apps"},
          .ownerFiles = {"/opt/*"}
    };
    expectVerdict(
        conditional, {"a/b: what must be beside a match is a plain name.", "apps" + kNotFull}, {});
    CleanupRule sweep = Testing::sampleRule("custom.a");
    sweep.risk = Risk::review;
    sweep.paths = {"~/Music/*"};
    expectVerdict(sweep, {}, {"~/Music/*" + kListsEverything});
    sweep.paths = {"~/Music"};
    sweep.contentsOnly = true;
    const std::string folder = never("~/Music", "protected location");
    expectVerdict(sweep, {folder}, {kRemovesEverything});
    sweep.risk = Risk::safe;
    expectVerdict(sweep, {folder, kMustBeReview}, {kRemovesEverything});
}

}  // namespace
}  // namespace Brimlo
