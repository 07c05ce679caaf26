#include "BrimloApp/Rules/RuleDraft.h"

#include "BrimloCore/UserRules/UserRules.h"
#include "Support/TempHome.h"

#include <QtCore/QVariant>
#include <gmock/gmock.h>

#include <limits>

namespace Brimlo {
namespace {

using testing::ElementsAre;
using RuleDraftTest = Testing::TempHome;

TEST_F(RuleDraftTest, MakesARuleOfWhatStandsInTheEditor) {
    RuleDraft draft;
    EXPECT_TRUE(draft.isNew());
    draft.setProperty("name", "\t Slack cache ");
    draft.setProperty("group", "   ");
    draft.setPath(0, "  ");
    draft.addPath();
    draft.setPath(1, " ~/a ");
    draft.addPath();
    draft.setPath(7, "~/nowhere");
    draft.choosePath(2, QString::fromStdString(at("b")));
    draft.setProperty("quitApps", "Slack, , Discord,");
    draft.setProperty("excludes", " *.plist ,keep-*");
    draft.setProperty("command", "  ");
    draft.setProperty("minAgeDays", 7);
    draft.setRisk("safe");
    draft.setRisk("harmless");
    draft.useSuggestedWording();

    const CleanupRule made = draft.makeRule();
    EXPECT_TRUE(UserRules::isCustom(made.id));
    EXPECT_EQ(made.name, "Slack cache");
    EXPECT_EQ(made.group, "Slack cache");
    EXPECT_THAT(made.paths, ElementsAre("~/a", "~/b"));
    EXPECT_THAT(made.quitApps, ElementsAre("Slack", "Discord"));
    EXPECT_THAT(made.excludes, ElementsAre("*.plist", "keep-*"));
    EXPECT_EQ(made.officialCommand, "  ") << "empty and blank are two things";
    EXPECT_EQ(made.minAgeDays, std::nullopt) << "the switch is off";
    EXPECT_EQ(made.risk, Risk::safe);
    EXPECT_EQ(made.regenerates, "The app recreates it automatically the next time it runs.");
    EXPECT_THAT(made.personas, ElementsAre(Persona::general));
    EXPECT_NE(draft.makeRule().id, made.id);
}

TEST_F(RuleDraftTest, KeepsARuleAsItIsWhenNothingIsChanged) {
    CleanupRule whole = UserRules::make(
        {.name = "Cache", .paths = {"~/cache"}, .risk = Risk::safe, .regenerates = "It returns."});
    whole.quitApps = {"Slack", "Discord"};
    whole.excludes = {"a*", "b"};
    whole.minAgeDays = 7;
    whole.officialCommand = "slack --clean";
    whole.contentsOnly = true;
    whole.group = "Chat";
    whole.conditions = {.beside = {"Preferences"}, .owners = {"~/apps"}, .ownerFiles = {}};
    EXPECT_EQ(RuleDraft::copyOf(whole)->makeRule().conditions, whole.conditions);
    EXPECT_TRUE(RuleDraft::copyOf(whole)->isNew());
    whole.personas = {Persona::general};
    EXPECT_EQ(RuleDraft{whole}.makeRule(), whole);

    // A group that is the name is not shown, and comes back as the name.
    whole.group = whole.name;
    RuleDraft draft{whole};
    EXPECT_EQ(draft.property("group"), "");
    EXPECT_EQ(draft.makeRule().group, whole.name);
    draft.setProperty("useMinAge", false);
    EXPECT_EQ(draft.makeRule().minAgeDays, std::nullopt);
    whole.minAgeDays = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(RuleDraft{whole}.property("minAgeDays"), std::numeric_limits<int>::max());
}

}  // namespace
}  // namespace Brimlo
