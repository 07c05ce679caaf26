#include "BrimloApp/Settings/Settings.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/Platform/Privacy.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <tuple>

namespace Brimlo {
namespace {

using Testing::exists;

constexpr auto kTick = QAccessible::CheckBox;
constexpr QSize kTall{1000, 1700};

using SettingsViewTest = Testing::WindowTest;

TEST_F(SettingsViewTest, EverySettingTakesEffectAtOnce) {
    open(Section::Settings, kTall);
    click(kTick, "Automatically clean regenerable items when disk space is low");
    EXPECT_TRUE(model().settings()->config().autoCleanEnabled);
    EXPECT_TRUE(isChecked(kTick, "Automatically clean regenerable items when disk space is low"));
    click(kTick, "Let auto-clean act on custom rules, too");
    EXPECT_TRUE(AppConfig::load().autoCleanIncludesCustomRules);
    EXPECT_TRUE(isChecked(kTick, "Let auto-clean act on custom rules, too"));
    click(kTick, "Remember how large folders were, to tell what grew");
    EXPECT_FALSE(AppConfig::load().rememberScans);
    const AppConfig& config = model().settings()->config();
    const std::tuple<const char*, std::int64_t, int> steppers[] = {
        {"Free-space threshold: *",            config.freeSpaceThresholdGB, 5 },
        {"Treat projects as idle after *",     config.staleDays,            14},
        {"Empty Brimlo's Trash items after *", config.trashRetentionDays,   1 },
    };
    for (const auto& [name, before, step] : steppers) {
        SCOPED_TRACE(name);
        const QQuickItem& stepper = get(QAccessible::SpinBox, name);
        clickAt(stepper.mapToScene({stepper.width() - 15, stepper.height() / 2}));
        EXPECT_EQ(stepper.property("value").toLongLong(), before + step);
        tabTo(QAccessible::SpinBox, name);
        key(Qt::Key_Down);
        EXPECT_EQ(stepper.property("value").toLongLong(), before);
    }
    const std::tuple<int, Qt::Key, int> steps[] = {
        {498, Qt::Key_Up,   500},
        {2,   Qt::Key_Down, 2  },
        {900, Qt::Key_Up,   900},
    };
    for (const auto& [before, pressed, after] : steps) {
        SCOPED_TRACE(testing::Message() << before << ' ' << pressed);
        model().settings()->setFreeSpaceThresholdGB(before);
        tabTo(QAccessible::SpinBox, "Free-space threshold: *");
        key(pressed);
        EXPECT_EQ(config.freeSpaceThresholdGB, after) << "a value out of range stays until touched";
    }
    write(".cache/thumbnails/normal/1.png");
    {
        const Testing::HeldWork held{Background::writers()};
        press("Preview auto-clean (dry run)");
        EXPECT_EQ(model().busy(), "Checking what auto-clean would remove…");
        EXPECT_FALSE(isEnabled("Run auto-clean now"));
    }
    finish();
    ASSERT_EQ(model().settings()->planned().size(), 1);
    EXPECT_TRUE(model().settings()->planned().front().endsWith(".cache/thumbnails/normal"));
    EXPECT_TRUE(sees(model().settings()->planned().front()));
    {
        const Testing::HeldWork held{Background::writers()};
        press("Run auto-clean now");
        EXPECT_EQ(model().busy(), "Running auto-clean…");
    }
    finish();
    EXPECT_FALSE(model().banner()->text().isEmpty());

    std::filesystem::remove(StoragePaths::support() + "/config.json");
    makeFolder("Library/Application Support/Brimlo/config.json/occupied");
    EXPECT_FALSE(model().settings()->read());
    click(kTick, "Let auto-clean act on custom rules, too");
    EXPECT_FALSE(isChecked(kTick, "Let auto-clean act on custom rules, too")) << "not saved";
}

TEST_F(SettingsViewTest, OffersWhatThisBuildCanDo) {
    const char* const missing = "Not available when running from a development build.";
    const char* const job = "Also run auto-clean when Brimlo is closed";
    open(Section::Settings, kTall);
    EXPECT_TRUE(sees(missing));
    EXPECT_FALSE(get(kTick, job).isEnabled());
    EXPECT_FALSE(isEnabled("Install"));
    EXPECT_FALSE(isEnabled("Check for updates now"));
    EXPECT_TRUE(sees("Version 1.2.3"));
    EXPECT_EQ(sees("Full Disk Access *"), !Platform::privacySettingsAddress().empty());
    close();

    bundleTool();
    writeProgram("pkexec", "exec \"$@\"");
    open(Section::Settings, kTall);
    EXPECT_FALSE(sees(missing));
    const char* const idle = "Auto-clean is off, so the background job will do nothing yet.";
    const auto path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");  // As on a system without systemctl.
    click(kTick, job);
    EXPECT_TRUE(isChecked(kTick, job));
    EXPECT_TRUE(sees(idle));
    click(kTick, "Automatically clean regenerable items when disk space is low");
    EXPECT_FALSE(sees(idle));
    click(kTick, job);
    EXPECT_FALSE(model().settings()->agentInstalled());
    qputenv("PATH", path);
    press("Install");
    EXPECT_TRUE(exists(at("bin/brimlo")));
    EXPECT_TRUE(sees("brimlo is installed at " + QString::fromStdString(at("bin/brimlo"))));
    EXPECT_TRUE(isEnabled("Reinstall"));
    expectLaidOut();
}

}  // namespace
}  // namespace Brimlo
