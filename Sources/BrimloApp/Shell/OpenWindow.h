#pragma once

class QQmlApplicationEngine;
class QQuickWindow;

namespace Brimlo {

class AppModel;
class DesktopSettings;
class Updater;

/// Opens the application's window over a model, which must outlive the engine, as must the other
/// two. Null when it can't be made; the reason is then on standard error. Main thread.
[[nodiscard]] QQuickWindow* openWindow(
    QQmlApplicationEngine& engine,
    AppModel& model,
    Updater& updater,
    DesktopSettings& desktopSettings);

}  // namespace Brimlo
