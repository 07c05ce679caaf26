#include "BrimloApp/Shell/AppWindow.h"

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/Support/Files.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Brimlo::AppWindow {

namespace {

/// The content of the file.
struct Size {
    std::int64_t width = 0;  ///< In device-independent pixels; 0 if unknown.
    std::int64_t height = 0;
    bool isMaximized = false;
};

std::string path() {
    return StoragePaths::support() + "/window.json";
}

Size read() {
    constexpr std::size_t kLongest = 4096;
    const auto text = readFile(path(), kLongest).value_or("{}");
    const auto value = Json::parse(text).value_or(Json::Object{});
    Json::FieldReader reader{value};
    const Size size{
        .width = reader.optionalNumber("width").value_or(0),
        .height = reader.optionalNumber("height").value_or(0),
        .isMaximized = reader.flagOr("isMaximized", false)};
    return reader.error() ? Size{} : size;
}

void write(const Size& size) {
    const Json::Object object{
        {"width",       size.width      },
        {"height",      size.height     },
        {"isMaximized", size.isMaximized}
    };
    static_cast<void>(AtomicFile::write(path(), Json::pretty(object)));
}

}  // namespace

QQuickWindow* open(
    QQmlApplicationEngine& engine,
    AppModel& model,
    Updater& updater,
    DesktopSettings& desktopSettings) {
    engine.setProperty("appModel", QVariant::fromValue(&model));
    engine.setProperty("updater", QVariant::fromValue(&updater));
    engine.setProperty("desktopSettings", QVariant::fromValue(&desktopSettings));
    engine.addImportPath("qrc:/qt/qml");
    engine.load(QUrl{"qrc:/qt/qml/Brimlo/ContentView.qml"});
    return engine.rootObjects().isEmpty()
               ? nullptr
               : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
}

QVariantMap lastSize() {
    const Size size = read();
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    QVariantMap properties;
    if (size.width > 0 && size.height > 0) {
        properties["width"] = static_cast<int>(std::min<std::int64_t>(size.width, screen.width()));
        properties["height"] =
            static_cast<int>(std::min<std::int64_t>(size.height, screen.height()));
    }
    if (size.isMaximized) {
        properties["visibility"] = QWindow::Maximized;
    }
    return properties;
}

SizeKeeper::SizeKeeper(const QWindow& window) {
    connect(&window, &QWindow::visibleChanged, this, [&window](bool isVisible) {
        if (isVisible) {
            return;
        }
        Size size = read();
        size.isMaximized = window.windowStates().testFlag(Qt::WindowMaximized);
        if (!size.isMaximized) {
            size.width = window.width();
            size.height = window.height();
        }
        write(size);
    });
}

}  // namespace Brimlo::AppWindow
