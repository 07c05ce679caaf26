#include "BrimloApp/Platform/SharedWindow.h"

#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/PrivateBus.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

namespace Brimlo {
namespace {

using SharedWindowTest = Testing::AppTest;

/// Plays the window that is open already.
struct FirstWindow : QDBusVirtualObject {
    QStringList asked;
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return ""; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        const QVariant first = message.arguments().value(0);
        asked += message.member() + message.signature() + first.toStringList().join(' ');
        return bus.send(message.createReply());
    }
};

TEST_F(SharedWindowTest, TakesWhatOthersAskOrAsksThem) {
    Testing::PrivateBus bus;
    if (!bus.isRunning()) {
        GTEST_SKIP() << "needs dbus-daemon";
    }
    QDBusConnection other = bus.connect();
    FirstWindow first;
    other.registerVirtualObject("/app/brimlo/brimlo", &first);
    ASSERT_TRUE(other.registerService("app.brimlo.brimlo"));
    for (const WindowRequest& request : {
             WindowRequest{},
             WindowRequest{.folder = QUrl{"file:///a%20b"}, .section = {}, .token = {}},
             WindowRequest::ofAction("Clean")
    }) {
        EXPECT_TRUE(SharedWindow{}.handOver(request));
    }
    EXPECT_EQ(
        first.asked,
        (QStringList{"Activatea{sv}", "Openasa{sv}file:///a%20b", "ActivateActionsava{sv}Clean"}));

    ASSERT_TRUE(other.unregisterService("app.brimlo.brimlo"));
    SharedWindow window;
    ASSERT_FALSE(window.handOver({}));
    std::vector<WindowRequest> asked;
    QObject::connect(&window, &SharedWindow::asked, [&](const WindowRequest& request) {
        asked.push_back(request);
    });
    const QVariantMap platform{
        {"activation-token", "T"},
        {"unknown",          1  }
    };
    const auto call = [&](const char* method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(
            "app.brimlo.brimlo", "/app/brimlo/brimlo", "org.freedesktop.Application", method);
        message.setArguments(arguments);
        EXPECT_TRUE(other.send(message));
    };
    const QStringList addresses{"http://a/b", "file://elsewhere/a", "", "file:///a", "file:///b"};
    call("Open", {addresses, platform});
    call("Open", {QStringList{}, platform});
    call("ActivateAction", {"Duplicates", QVariantList{}, QVariantMap{}});
    call("ActivateAction", {"clean everything", QVariantList{}, QVariantMap{}});
    waitFor([&] { return asked.size() == 4; });
    EXPECT_EQ(asked.at(0), (WindowRequest{QUrl{"file:///a"}, {}, "T"}));
    EXPECT_EQ(asked.at(1), (WindowRequest{{}, {}, "T"}));
    EXPECT_EQ(asked.at(2), (WindowRequest{{}, Section::Duplicates, {}}));
    EXPECT_EQ(asked.at(3), WindowRequest{});
}

TEST_F(SharedWindowTest, IsAloneWithoutABus) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    EXPECT_FALSE(SharedWindow{}.handOver({}));
}

}  // namespace
}  // namespace Brimlo
