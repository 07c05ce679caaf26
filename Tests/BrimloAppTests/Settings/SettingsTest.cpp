#include "BrimloApp/Settings/Settings.h"

#include "BrimloApp/History/History.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloAppTests/Support/ModelTest.h"
#include "BrimloCore/LaunchAgent/LaunchAgent.h"
#include "BrimloCore/Platform/Fmt.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class SettingsTest : public Testing::ModelTest {
protected:
    /// What auto-clean may take: `count` caches of a rule of the user's, where the settings let it.
    void makeCaches(const int count) {
        for (int i = 0; i < count; ++i) {
            write("caches/" + std::to_string(i) + "/data", std::string(9'000, 'a'));
        }
        addRule(
            {.id = "custom.caches", .name = "Caches", .paths = {"~/caches/*"}, .risk = Risk::safe});
        model().settings()->setAutoCleanIncludesCustomRules(true);
    }

    std::string banner() { return model().banner()->text().toStdString(); }
};

TEST_F(SettingsTest, SavesEachSettingAsItIsSet) {
    model().settings()->setAutoCleanEnabled(true);
    model().settings()->setFreeSpaceThresholdGB(55);
    // The tool changes another one meanwhile.
    ASSERT_TRUE(AppConfig::change([](AppConfig& config) { config.cliInstallOffered = true; }));
    model().settings()->setStaleDays(28);
    model().settings()->setTrashRetentionDays(0);
    const AppConfig expected{
        .autoCleanEnabled = true,
        .freeSpaceThresholdGB = 55,
        .staleDays = 28,
        .trashRetentionDays = 0,
        .cliInstallOffered = true};
    EXPECT_EQ(AppConfig::load(), expected);
    EXPECT_EQ(model().settings()->config(), expected);
}

TEST_F(SettingsTest, ChecksHourlyWhetherSpaceIsShort) {
    model();
    finish();
    clock.advance(24h);
    finish();
    EXPECT_EQ(banner(), "") << "auto-clean is off";

    ASSERT_TRUE(AppConfig::change([](AppConfig& config) {  // By the tool.
        config.autoCleanEnabled = true;
        config.freeSpaceThresholdGB = 0;
    }));
    clock.advance(1h - 1ms);
    EXPECT_EQ(model().busy(), "");
    clock.advance(1ms);
    EXPECT_EQ(model().busy(), "Running auto-clean…");
    EXPECT_TRUE(model().settings()->autoCleanEnabled());
    finish();
    EXPECT_THAT(banner(), testing::MatchesRegex("Free space .+ is above the 0 GB threshold\\."));

    // Each tick says so again, and the first comes with the start.
    restart();
    model();
    EXPECT_EQ(banner(), "");
    settle();
    finish();
    EXPECT_THAT(banner(), HasSubstr("is above"));
}

TEST_F(SettingsTest, TellsWhatAutoCleanTook) {
    model().settings()->runAutoClean(true, false);
    finish();
    EXPECT_EQ(banner(), "Auto-clean found nothing to remove right now.");

    writeProgram("docker", "touch " + at("asked") + "\nexit 1");
    makeCaches(1);
    const std::string one = Fmt::bytes(12'288);
    model().settings()->runAutoClean(true, true);
    EXPECT_EQ(model().busy(), "Checking what auto-clean would remove…");
    model().settings()->runAutoClean(true, false);
    finish();
    EXPECT_EQ(banner(), "Auto-clean would remove 1 item (" + one + ").");
    EXPECT_TRUE(Testing::exists(at("asked"))) << "the surroundings' docker, not the machine's";
    EXPECT_TRUE(Testing::exists(at("caches/0")));

    makeCaches(2);
    {
        const Testing::HeldWork held{Background::writers()};
        model().cleanup()->run(CleanPlan{{{.path = write("data")}}});
        model().settings()->runAutoClean(true, false);
        EXPECT_EQ(model().busy(), "") << "not beside a clean";
    }
    finish();
    model().settings()->runAutoClean(true, false);
    finish();
    EXPECT_EQ(banner(), "Auto-clean removed 2 items (" + Fmt::bytes(24'576) + ").");
    EXPECT_FALSE(Testing::exists(at("caches/0")));
    EXPECT_EQ(model().history()->journal().size(), 3U);

    write("Library/Application Support/Brimlo/config.json", R"({"trashRetentionDays": -1})");
    model().settings()->runAutoClean(true, false);
    EXPECT_EQ(model().busy(), "") << "nothing is purged by a retention that was not set";
    EXPECT_EQ(
        banner(), "The settings could not be read: trashRetentionDays is -1, not from 0 to 36500.");
}

TEST_F(SettingsTest, InstallsTheJobForTheToolOfThisBuild) {
    model().settings()->setAgent(true);
    EXPECT_EQ(
        banner(),
        "Background mode needs the packaged app (the command line tool is missing from this "
        "build).");
    EXPECT_FALSE(model().settings()->hasBundledCLI());

    qputenv("PATH", "/nowhere");  // As on a system without systemctl.
    const std::string tool = bundleTool();
    model().settings()->setAgent(true);
    EXPECT_EQ(
        banner(),
        "Background job installed, but auto-clean is off, so it will do nothing yet. Turn on "
        "auto-clean above.");
    EXPECT_EQ(LaunchAgent::installedExecutable(), tool);
    EXPECT_FALSE(model().settings()->agentIsOfOtherCopy());
    model().settings()->setAutoCleanEnabled(true);
    model().settings()->setAgent(true);
    EXPECT_EQ(
        banner(), "Background auto-clean is on. It checks every 6 hours while you are logged in.");

    // Another copy of the application installed it.
    ASSERT_TRUE(LaunchAgent::install(writeProgram("elsewhere/brimlo")));
    restart();
    EXPECT_TRUE(model().settings()->agentIsOfOtherCopy());
    model().settings()->setAgent(false);
    EXPECT_EQ(banner(), "Background job removed.");
    EXPECT_FALSE(model().settings()->agentInstalled());

    std::filesystem::remove_all(at(".config/systemd"));
    write(".config/systemd", "no folder");
    model().settings()->setAgent(true);
    EXPECT_THAT(banner(), testing::StartsWith("Could not install the background job: "));
    EXPECT_FALSE(model().settings()->agentInstalled());
}

TEST_F(SettingsTest, InstallsTheToolInTheWordsOfEachOutcome) {
    model().settings()->installCLI();
    EXPECT_EQ(banner(), "This build has no command-line tool to install.");
    bundleTool();
    const std::pair<const char*, const char*> cases[] = {
        {"exit 126",    "Command-line tool not installed. You can install it later from Settings."},
        {"exit 127",    "Could not install the command-line tool: authorization failed"           },
        {"exec \"$@\"", "Command-line tool ready. Run `brimlo` in any terminal."                  },
    };
    for (const auto& [authorizer, words] : cases) {
        writeProgram("pkexec", authorizer);
        model().settings()->installCLI();
        EXPECT_EQ(banner(), words);
    }
    EXPECT_TRUE(model().settings()->cliInstalled());
}

TEST_F(SettingsTest, OffersTheToolOnceWhateverTheAnswer) {
    model().settings()->offerCLIInstallIfNeeded();
    EXPECT_FALSE(model().settings()->offersCLI()) << "there is none";
    EXPECT_FALSE(AppConfig::load().cliInstallOffered);
    link("path/brimlo", bundleTool());
    model().settings()->offerCLIInstallIfNeeded();
    EXPECT_FALSE(model().settings()->offersCLI()) << "a terminal finds it already";
    std::filesystem::remove(at("path/brimlo"));
    model().settings()->offerCLIInstallIfNeeded();
    EXPECT_FALSE(model().settings()->offersCLI()) << "nothing was cleaned yet";
    EXPECT_FALSE(AppConfig::load().cliInstallOffered);
    model().cleanup()->run(planFiles(1));
    finish();
    model().settings()->offerCLIInstallIfNeeded();
    EXPECT_TRUE(model().settings()->offersCLI());
    EXPECT_TRUE(AppConfig::load().cliInstallOffered) << "before the answer";
}

}  // namespace
}  // namespace Brimlo
