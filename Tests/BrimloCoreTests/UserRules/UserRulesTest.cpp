#include "BrimloCore/UserRules/UserRules.h"

#include "BrimloCoreTests/Support/SampleRule.h"
#include "Support/TempHome.h"

#include <filesystem>

namespace Brimlo {
namespace {

using namespace std::string_literals;
using Testing::contentOf;
using Testing::exists;
using Testing::packOf;
using Testing::sampleRule;

class UserRulesTest : public Testing::TempHome {
protected:
    std::string folder() const { return at("rules"); }

    UserRules::Loaded load(const std::string& folder = "rules") const {
        return UserRules::load(at(folder));
    }
};

TEST_F(UserRulesTest, LoadsFilesInTheOrderOfTheirNames) {
    CleanupRule again = sampleRule("custom.b");
    again.name = "Again";
    write("rules/b.json", packOf(sampleRule("custom.b")));
    write("rules/a.json", packOf(again));
    write("rules/.hidden.json", packOf(sampleRule("custom.hidden")));
    for (const char* ignored :
         {"c.JSON", "notes.txt", ".json", "json", "d.json~", "inner/e.json"}) {
        write("rules/"s + ignored, packOf(sampleRule("custom.ignored")));
    }
    const UserRules::Loaded loaded = load();
    EXPECT_EQ(
        loaded.rules, (std::vector{sampleRule("custom.hidden"), again, sampleRule("custom.b")}));
    EXPECT_EQ(loaded.issues, std::vector<std::string>{});
}

TEST_F(UserRulesTest, TellsWhatIsWrongWithEachFile) {
    ASSERT_EQ(load().issues, std::vector<std::string>{}) << "a missing folder is an empty one";
    const std::string huge = write("rules/y.json", packOf(sampleRule("custom.huge")));
    std::filesystem::resize_file(huge, std::size_t{20} << 20U);
    write("rules/a.json", "{}");
    write("rules/good.json", packOf(sampleRule("custom.good")));
    makeFolder("rules/w.json");
    link("rules/x.json", "nowhere");
    const UserRules::Loaded loaded = load();
    EXPECT_EQ(loaded.rules, std::vector{sampleRule("custom.good")});
    EXPECT_EQ(
        loaded.issues,
        (std::vector<std::string>{
            R"(a.json: not a rule pack: field "pack": is missing)",
            "w.json: could not be read: Is a directory",
            "x.json: could not be read: No such file or directory",
            "y.json: could not be read: File too large"}));
}

TEST_F(UserRulesTest, SavesWhatItLoads) {
    ASSERT_TRUE(UserRules::save(sampleRule("custom.a"), at("new/rules")));
    EXPECT_EQ(load("new/rules").rules, std::vector{sampleRule("custom.a")});
    write("new/rules/custom.b.json.01234567.tmp", "left by a save that was killed");
    write("new/rules/notes.01234567.tmp");
    ASSERT_TRUE(UserRules::save(sampleRule("custom.a"), at("new/rules")));
    std::filesystem::remove(at("new/rules/notes.01234567.tmp"));
    EXPECT_EQ(Testing::describeTree(at("new/rules")).size(), 2U) << "nothing temporary is left";
}

TEST_F(UserRulesTest, SavesNoRuleThatCouldNotBeLoaded) {
    CleanupRule invalid = sampleRule("custom.a");
    invalid.name = "";
    invalid.paths = {};
    const auto refused = UserRules::save(invalid, folder());
    ASSERT_FALSE(refused);
    const Error expected{"Brimlo", 10, "Give the rule a name.\nAdd at least one path."};
    EXPECT_EQ(refused.error(), expected);
    for (const std::string& id : {"../a"s, "a/b"s, "a\0b"s, "a\n"s, ""s}) {
        EXPECT_FALSE(UserRules::save(sampleRule(id), folder()));
    }
    EXPECT_FALSE(exists(folder()));

    ASSERT_TRUE(UserRules::save(sampleRule("custom.a"), folder()));
    const std::string before = contentOf(at("rules/custom.a.json"));
    CleanupRule noText = sampleRule("custom.a");
    noText.paths = {"~/caf\xe9/x"};
    EXPECT_FALSE(UserRules::save(noText, folder())) << "JSON cannot hold such a name";
    EXPECT_EQ(contentOf(at("rules/custom.a.json")), before);
}

TEST_F(UserRulesTest, RemovesARuleForGood) {
    ASSERT_TRUE(UserRules::save(sampleRule("custom.a"), folder()));
    ASSERT_TRUE(UserRules::save(sampleRule("custom.b"), folder()));
    write("x.json");
    write("rules/inner/y.json");
    for (const std::string& id : {"../x"s, "inner/y"s, ".."s, "a..b"s, "custom.a\0"s}) {
        EXPECT_TRUE(UserRules::remove(id, folder())) << id;
    }
    EXPECT_TRUE(UserRules::remove("custom.a", folder()));
    EXPECT_EQ(load().rules, std::vector{sampleRule("custom.b")});
    EXPECT_TRUE(exists(at("x.json")) && exists(at("rules/inner/y.json")));
    const auto missing = UserRules::remove("custom.a", folder());
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error(), Error::fromSystem(ENOENT));
}

}  // namespace
}  // namespace Brimlo
