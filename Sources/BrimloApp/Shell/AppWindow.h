#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>

class QQmlApplicationEngine;
class QQuickWindow;
class QWindow;

namespace Brimlo {

class AppModel;
class DesktopSettings;
class Updater;

}  // namespace Brimlo

/// The application's window, and its size from one start to the next. Main thread.
namespace Brimlo::AppWindow {

/// Opens the window over a model. The model and the other two must outlive the engine. Null if the
/// window can't be made; the reason is then on standard error.
[[nodiscard]] QQuickWindow* open(
    QQmlApplicationEngine& engine,
    AppModel& model,
    Updater& updater,
    DesktopSettings& desktopSettings);

/// The initial properties of the window: its size when it was last closed, never larger than the
/// screen. Empty if no size was saved.
[[nodiscard]] QVariantMap lastSize();

/// Saves the size of a window when the window is closed. A maximized window keeps the size that was
/// saved before.
class SizeKeeper : public QObject {
public:
    /// `window` must outlive this.
    explicit SizeKeeper(const QWindow& window);
};

}  // namespace Brimlo::AppWindow
