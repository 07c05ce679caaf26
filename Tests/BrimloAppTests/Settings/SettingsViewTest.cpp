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
constexpr QSize kTall{1000, 1500};

class SettingsViewTest : public Testing::WindowTest {
protected:
    [[nodiscard]] bool isUsable(const QAccessible::Role role, const char* name) const {
        const QQuickItem* const found = find(role, name);
        return found != nullptr && found->isEnabled();
    }
};

TEST_F(SettingsViewTest, EverySettingTakesEffectAtOnce) {
    open(Section::Settings, kTall);
    click(kTick, "Automatically clean regenerable items when disk space is low");
    EXPECT_TRUE(model().settings()->config().autoCleanEnabled);
    EXPECT_TRUE(isChecked(kTick, "Automatically clean regenerable items when disk space is low"));
    click(kTick, "Let auto-clean act on custom rules, too");
    EXPECT_TRUE(AppConfig::load().autoCleanIncludesCustomRules);
    EXPECT_TRUE(isChecked(kTick, "Let auto-clean act on custom rules, too"));
    struct Case {
        const char* stepper;
        std::int64_t before;
        std::int64_t after;
        const char* shown;
    };
    const AppConfig& config = model().settings()->config();
    const Case cases[] = {
        {"Free-space threshold: *",
         config.freeSpaceThresholdGB,
         config.freeSpaceThresholdGB + 5,
         "GB"                                                                             },
        {"Treat projects as idle after *",     config.staleDays, config.staleDays + 14, ""},
        {"Empty Brimlo's Trash items after *",
         config.trashRetentionDays,
         config.trashRetentionDays + 1,
         ""                                                                               },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stepper);
        QQuickItem* const stepper = find(QAccessible::SpinBox, c.stepper);
        ASSERT_NE(stepper, nullptr);
        EXPECT_EQ(stepper->property("value").toLongLong(), c.before);
        clickAt(stepper->mapToScene({stepper->width() - 15, stepper->height() / 2}));
        EXPECT_EQ(stepper->property("value").toLongLong(), c.after);
        tabTo(QAccessible::SpinBox, c.stepper);
        key(Qt::Key_Down);
        EXPECT_EQ(stepper->property("value").toLongLong(), c.before);
    }
    const std::tuple<int, Qt::Key, int> steps[] = {
        {498, Qt::Key_Up,   500},
        {2,   Qt::Key_Up,   7  },
        {2,   Qt::Key_Down, 2  },
        {900, Qt::Key_Up,   900},
        {900, Qt::Key_Down, 895},
        {500, Qt::Key_Up,   500},
    };
    for (const auto& [before, pressed, after] : steps) {
        SCOPED_TRACE(testing::Message() << before << ' ' << pressed);
        model().settings()->setFreeSpaceThresholdGB(before);
        tabTo(QAccessible::SpinBox, "Free-space threshold: *");
        key(pressed);
        EXPECT_EQ(config.freeSpaceThresholdGB, after) << "a value out of range stays until touched";
    }
    {
        const Testing::HeldWork held{Background::writers()};
        press("Preview auto-clean (dry run)");
        EXPECT_EQ(model().busy(), "Checking what auto-clean would remove…");
        EXPECT_FALSE(isEnabled("Run auto-clean now"));
    }
    finish();
    {
        const Testing::HeldWork held{Background::writers()};
        press("Run auto-clean now");
        EXPECT_EQ(model().busy(), "Running auto-clean…");
    }
    finish();
    EXPECT_FALSE(model().banner().isEmpty());

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
    EXPECT_FALSE(isUsable(kTick, job));
    EXPECT_FALSE(isEnabled("Install"));
    EXPECT_FALSE(isUsable(kTick, "Automatically check for updates"));
    EXPECT_FALSE(isEnabled("Check for updates now"));
    EXPECT_TRUE(sees("Version 1.2.3"));
    EXPECT_EQ(sees("Full Disk Access *"), !Platform::privacySettingsAddress().empty());
    close();

    bundleTool();
    write("pkexec", "#!/bin/sh\nexec \"$@\"\n");
    std::filesystem::permissions(at("pkexec"), std::filesystem::perms::owner_all);
    open(Section::Settings, kTall);
    press("Not Now");
    await([&] { return sees("Settings"); }, "the end of the question");
    EXPECT_FALSE(sees(missing));
    const char* const idle = "Auto-clean is off, so the background job will do nothing yet.";
    EXPECT_FALSE(sees(idle));
    const auto path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");  // As on a system without systemctl.
    click(kTick, job);
    EXPECT_TRUE(isChecked(kTick, job));
    EXPECT_TRUE(sees(idle));
    EXPECT_FALSE(sees("The background job points at a different copy of Brimlo. *"));
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
