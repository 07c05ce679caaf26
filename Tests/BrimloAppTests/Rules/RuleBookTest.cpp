#include "BrimloApp/Rules/RuleBook.h"

#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RuleBookTest : public Testing::ModelTest {
protected:
    /// A rule that finds the folder "cache" of the home.
    CleanupRule rule(const std::string& name = "Cache") {
        write("cache/data", std::string(10'000, 'a'));
        return UserRules::make(
            {.id = "custom.cache",
             .name = name,
             .group = {},
             .paths = {"~/cache"},
             .risk = Risk::safe,
             .regenerates = "It comes back."});
    }

    QUrl address(const char* name) { return QUrl::fromLocalFile(QString::fromStdString(at(name))); }
};

TEST_F(RuleBookTest, SavesARuleAndDeletesItWithItsFindings) {
    model().rules()->editRule(rule());
    model().rules()->saveRuleDraft();
    EXPECT_EQ(model().rules()->ruleDraft(), nullptr);
    EXPECT_EQ(
        model().banner()->text(), "Saved rule “Cache”. Rescanning so it shows up in Smart Clean.");
    EXPECT_TRUE(model().smartClean()->isSuggesting());
    finish();
    ASSERT_THAT(model().rules()->customRules(), SizeIs(1));
    EXPECT_EQ(suggestion("custom.cache").items.front().path, at("cache"));

    model().rules()->saveRule(rule("Renamed"));
    finish();
    ASSERT_THAT(model().rules()->customRules(), SizeIs(1)) << "its file was overwritten";

    const CleanupRule renamed = model().rules()->customRules().front();
    model().smartClean()->toggle(suggestion("custom.cache"));
    model().smartClean()->toggle(suggestion("custom.cache"));
    ASSERT_FALSE(model().smartClean()->currentPlan().items().empty());
    model().banner()->show({});
    model().rules()->deleteRule(rule());
    EXPECT_THAT(model().rules()->customRules(), IsEmpty());
    EXPECT_THAT(model().smartClean()->suggestions(), IsEmpty());
    EXPECT_THAT(model().smartClean()->currentPlan().items(), IsEmpty());
    EXPECT_EQ(model().banner()->text(), "Deleted rule “Renamed”.");
    EXPECT_FALSE(model().smartClean()->isSuggesting());
    model().undo();
    finish();
    EXPECT_THAT(model().rules()->customRules(), ElementsAre(renamed));
    EXPECT_EQ(suggestion("custom.cache").items.front().path, at("cache"));

    // One that stands in a file of another name can't be deleted so, and stays with its findings.
    model().rules()->saveRule(rule());
    finish();
    const std::string rules = UserRules::defaultDirectory();
    std::filesystem::rename(rules + "/custom.cache.json", rules + "/mine.json");
    model().rules()->deleteRule(rule());
    EXPECT_EQ(model().banner()->text(), "Could not delete rule: No such file or directory");
    EXPECT_THAT(model().rules()->customRules(), SizeIs(1));
    EXPECT_FALSE(model().smartClean()->suggestions().empty());
}

TEST_F(RuleBookTest, RunsAgainForWhatChangedDuringARun) {
    model();
    finish();
    std::vector<bool> runs;
    QObject::connect(model().smartClean(), &SmartClean::progressChanged, &model(), [&] {
        const bool runsNow = model().smartClean()->isSuggesting();
        if (runs.empty() || runs.back() != runsNow) {
            runs.push_back(runsNow);
        }
    });
    model().smartClean()->loadSuggestions();
    model().rules()->saveRule(rule());
    finish();
    EXPECT_EQ(runs, (std::vector{true, false, true, false}));
    model().smartClean()->disconnect(&model());

    ASSERT_FALSE(model().smartClean()->suggestions().empty());
    model().smartClean()->loadSuggestions();
    Background::waitForDone();
    model().rules()->deleteRule(rule());
    finish();
    EXPECT_THAT(model().smartClean()->suggestions(), IsEmpty())
        << "the run before still knew the rule";
}

TEST_F(RuleBookTest, ExportsAndImportsRules) {
    model().rules()->saveRule(rule());
    finish();
    model().rules()->exportRules(address("rules.json"));
    EXPECT_EQ(model().banner()->text(), "Exported 1 rule(s).");
    model().rules()->exportRules(address("no/such/folder/rules.json"));
    EXPECT_TRUE(model().banner()->text().startsWith("Export failed: "));

    model().rules()->deleteRule(rule());
    model().rules()->importRules(address("rules.json"));
    EXPECT_EQ(model().busy(), "Importing rules…");
    model().rules()->importRules(address("rules.json"));
    EXPECT_EQ(model().banner()->text(), "Import failed: other work is under way.");
    finish();
    EXPECT_EQ(model().banner()->text(), "Imported 1 rule(s).");
    ASSERT_THAT(model().rules()->customRules(), SizeIs(1));
    EXPECT_EQ(model().rules()->customRules().front().id, "custom.cache");
    EXPECT_EQ(suggestion("custom.cache").items.size(), 1U);

    std::string pack = Testing::contentOf(at("rules.json"));
    const std::string& builtIn = model().rules()->builtInRules().front().id;
    pack.replace(pack.find("custom.cache"), std::string_view{"custom.cache"}.size(), builtIn);
    write("posing.json", pack);
    model().rules()->importRules(address("posing.json"));
    finish();
    for (const CleanupRule& each : model().rules()->customRules()) {
        EXPECT_NE(each.id, builtIn) << "an import overrides no built-in rule";
    }
    EXPECT_THAT(model().rules()->customRules(), SizeIs(2));

    write("bad.json", R"({"pack": "p", "rules": [{"id": "custom.x"}]})");
    model().rules()->importRules(address("bad.json"));
    finish();
    EXPECT_THAT(
        model().banner()->text().toStdString(),
        testing::StartsWith("Imported 0 rule(s). Rejected 1: rule #"));
    for (const char* name : {"missing.json", "cache/data"}) {
        model().rules()->importRules(address(name));
        finish();
        EXPECT_TRUE(model().banner()->text().startsWith("Import failed: ")) << name;
    }
}

}  // namespace
}  // namespace Brimlo
