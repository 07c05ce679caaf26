#include "BrimloApp/Platform/Desktop.h"

#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/PrivateBus.h"
#include "BrimloCore/Models/FileUrl.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

namespace Brimlo {
namespace {

/// Plays a file manager: notes what it is asked to select.
struct FileManager : QDBusVirtualObject {
    std::optional<bool> succeeds;  ///< It never answers when absent.
    QStringList asked;
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return ""; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        EXPECT_EQ(message.member() + message.signature(), "ShowItemsass");
        asked += message.arguments().at(0).toStringList();
        return !succeeds ||
               bus.send(*succeeds ? message.createReply() : message.createErrorReply("a.b", "no"));
    }
};

class DesktopTest : public Testing::AppTest {
protected:
    void start(const std::vector<std::string>& paths) {
        Desktop::reveal(
            paths,
            [this] { ++failures; },
            [this](const QUrl& folder) {
                opened.append(folder.toEncoded());
                return canOpen;
            });
    }
    [[nodiscard]] QString url(std::string_view relative) const {
        return QString::fromStdString(FileUrl::fromPath(at(relative)));
    }
    QStringList opened;
    bool canOpen = true;
    int failures = 0;
};

TEST_F(DesktopTest, SelectsInTheFileManagerOrOpensTheFolders) {
    Testing::PrivateBus bus;
    if (!bus.isRunning()) {
        GTEST_SKIP() << "needs dbus-daemon";
    }
    const std::vector entries{write("a b/r.sh"), write("a b/x.desktop"), write("c/d")};
    const QStringList folders{url("a b"), url("c")};
    start(entries);
    waitFor([&] { return opened == folders; });  // Nobody is there to ask.
    FileManager manager;
    QDBusConnection service = bus.connect();
    service.registerVirtualObject("/org/freedesktop/FileManager1", &manager);
    service.registerService("org.freedesktop.FileManager1");
    for (const bool succeeds : {true, false}) {
        manager.succeeds = succeeds;
        manager.asked.clear();
        start(entries);
        waitFor([&] { return !manager.asked.empty(); });
        EXPECT_EQ(manager.asked, (QStringList{url("a b/r.sh"), url("a b/x.desktop"), url("c/d")}));
    }
    manager.succeeds.reset();
    start({entries.front()});
    waitFor([&] { return opened.back() == url("a b"); });
    EXPECT_EQ(opened, folders + folders + QStringList{url("a b")}) << "nobody, error, no answer";
}

TEST_F(DesktopTest, OpensNothingButFoldersAndFewOfThem) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    std::vector<std::string> entries{write("program.desktop") + "/gone", at("missing/gone")};
    for (const char* name : {"odd\xFF\n'/a", "1/a", "1/b", "2/a", "3/a", "4/a", "5/a"}) {
        entries.push_back(write(name));
    }
    start(entries);
    EXPECT_EQ(opened, QStringList({url("odd\xFF\n'"), url("1"), url("2"), url("3"), url("4")}));
    EXPECT_EQ(failures, 0);
    start({at("missing/gone")});
    EXPECT_EQ(failures, 1) << "there is nothing to open";
    canOpen = false;
    start(entries);
    EXPECT_EQ(failures, 2) << "nothing opens folders";
}

}  // namespace
}  // namespace Brimlo
