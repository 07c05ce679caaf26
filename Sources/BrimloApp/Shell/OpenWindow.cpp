#include "BrimloApp/Shell/OpenWindow.h"

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>

namespace Brimlo {

QQuickWindow* openWindow(
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

}  // namespace Brimlo
