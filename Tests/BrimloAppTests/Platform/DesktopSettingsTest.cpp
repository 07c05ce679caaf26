#include "BrimloApp/Platform/DesktopSettings.h"

#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/PrivateBus.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusVirtualObject>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

namespace Brimlo::Testing {
namespace {

const QString kService = "org.freedesktop.portal.Desktop";
const QString kPath = "/org/freedesktop/portal/desktop";
const QString kInterface = "org.freedesktop.portal.Settings";
const QString kLooks = "org.freedesktop.appearance ";
const QString kGnome = "org.gnome.desktop.interface ";

QVariant variant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

QVariant color(const QString& parts) {
    QDBusArgument argument;
    argument.beginStructure();
    for (const QString& part : parts.split(' ')) {
        argument << part.toDouble();
    }
    argument.endStructure();
    return QVariant::fromValue(argument);
}

/// Plays a portal of either version that knows one setting. Without one it never answers.
struct Portal : QDBusVirtualObject {
    QString method = "ReadOne";
    QString setting;
    QVariant value;
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        const bool isAsked = QVariant(call.arguments()).toStringList().join(' ') == setting;
        if (call.member() != method || !(isAsked || setting.isEmpty())) {
            return bus.send(call.createErrorReply(QDBusError::UnknownMethod, "unknown"));
        }
        const QVariant answer = method == "Read" ? variant(variant(value)) : variant(value);
        return setting.isEmpty() || bus.send(call.createReply(answer));
    }
};

/// All that differs from the defaults.
std::string summary(const DesktopSettings& settings) {
    QStringList words{settings.reduceMotion() ? "still" : "", settings.isDark() ? "dark" : ""};
    words << (settings.accent().isValid() ? settings.accent().name() : "") << settings.fontFamily()
          << (settings.fontScale() == 1 ? "" : QString::number(settings.fontScale()))
          << (settings.highContrast() ? "contrast" : "");
    return words.join(' ').simplified().toStdString();
}

class DesktopSettingsTest : public AppTest {
protected:
    void SetUp() override {
        if (!bus_.isRunning() || !service_.registerVirtualObject(kPath, &portal_)) {
            GTEST_SKIP() << "dbus-daemon is not installed";
        }
    }

    /// Waits until all that was said has arrived, and what was asked and answered upon it as well.
    void settleBus() {
        const auto call = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Fence");
        for (int round = 0; round < 2; ++round) {
            const auto fence = ours_.asyncCall(call);
            waitFor([&] { return fence.isFinished(); });
            settle();
        }
    }

    static void change(const QDBusConnection& from, const QString& setting, const QVariant& value) {
        auto signal = QDBusMessage::createSignal(kPath, kInterface, "SettingChanged");
        from.send(signal << setting.section(' ', 0, 0) << setting.section(' ', 1) << value);
    }

    PrivateBus bus_;
    QDBusConnection ours_ = bus_.connect();
    QDBusConnection service_ = bus_.connect();
    Portal portal_;
};

TEST_F(DesktopSettingsTest, BelievesOnlyWhatCanBe) {
    const std::tuple<QString, QVariant, std::string> cases[] = {
        {kLooks + "color-scheme",        1U,                            "dark"     },
        {kLooks + "color-scheme",        3U,                            ""         },
        {kLooks + "accent-color",        color("1 0.5 0"),              "#ff8000"  },
        {kLooks + "accent-color",        color("nan 0 1.01"),           ""         },
        {kLooks + "accent-color",        color("0 0 0 0"),              ""         },
        {kGnome + "enable-animations",   false,                         "still"    },
        {kGnome + "enable-animations",   0U,                            ""         },
        {kGnome + "text-scaling-factor", 9e300,                         "3"        },
        {kGnome + "text-scaling-factor", qQNaN(),                       ""         },
        {kGnome + "font-name",           "Inter Semi-Bold Italic 16.5", "Inter 1.5"},
        {kGnome + "font-name",           "No Such Family -22",          ""         },
    };
    service_.registerService(kService);
    for (const auto& [setting, value, expected] : cases) {
        for (const auto* const method : {"Read", "ReadOne"}) {
            portal_.method = method;
            portal_.setting = setting;
            portal_.value = value;
            const DesktopSettings settings(ours_);
            settleBus();
            EXPECT_EQ(summary(settings), expected) << method << " of " << setting.toStdString();
        }
    }
}

TEST_F(DesktopSettingsTest, FollowsWhatThereIs) {
    QGuiApplication::setPalette(QPalette(Qt::black));
    const DesktopSettings alone(QDBusConnection("no such bus"));
    const DesktopSettings settings(ours_);
    std::string log;
    const auto note = [&](char sign, auto signal) {
        QObject::connect(&settings, signal, [&log, sign] { log += sign; });
    };
    note('m', &DesktopSettings::reduceMotionChanged);
    note('d', &DesktopSettings::isDarkChanged);
    note('a', &DesktopSettings::accentChanged);
    note('f', &DesktopSettings::fontFamilyChanged);
    note('s', &DesktopSettings::fontScaleChanged);
    note('c', &DesktopSettings::highContrastChanged);
    settleBus();  // No portal.
    EXPECT_EQ(summary(alone) + summary(settings), "darkdark");
    service_.registerService(kService);  // One that hangs.
    settleBus();
    service_.unregisterService(kService);
    portal_.setting = kLooks + "accent-color";
    portal_.value = color("0 0 1");
    service_.registerService(kService);
    waitFor([&] { return settings.accent().isValid(); });
    for (int time = 0; time < 2; ++time) {
        change(service_, kLooks + "color-scheme", variant(2U));
        change(service_, kLooks + "contrast", variant(variant(1U)));
        change(service_, kGnome + "font-name", variant("Inter 22"));
        change(service_, kGnome + "enable-animations", variant(false));
    }
    change(service_, kLooks + "color-scheme", 1U);        // No variant.
    change(ours_, kLooks + "color-scheme", variant(1U));  // Not by the portal.
    settleBus();
    EXPECT_EQ(summary(settings) + ' ' + log, "still #0000ff Inter 2 contrast adcfsm");
    change(service_, kLooks + "color-scheme", variant(0U));
    settleBus();
    EXPECT_EQ(summary(alone) + summary(settings), "darkstill dark #0000ff Inter 2 contrast");
    QGuiApplication::setPalette(QPalette(Qt::white));
    EXPECT_EQ(summary(alone) + summary(settings), "still #0000ff Inter 2 contrast");
}

}  // namespace
}  // namespace Brimlo::Testing
