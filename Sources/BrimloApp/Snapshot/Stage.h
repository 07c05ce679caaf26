#pragma once

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QAccessible>
#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>

#include <chrono>

class QQuickWindow;

namespace Brimlo {

/// The application's window over a model of its own, worked without a person. Main thread.
class Stage {
public:
    /// Opens the window, at the Overview, if it can.
    Stage();

    /// Whether there is a window. All below needs it.
    [[nodiscard]] bool isOpen() const { return window_ != nullptr; }

    [[nodiscard]] AppModel& model() { return model_; }

    /// Presses a key, wherever the focus is.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Presses a control as assistive technology does; false when none is visible.
    [[nodiscard]] bool press(QAccessible::Role role, const QString& name);

    /// Gives the focus to a list or a control; false when none is visible.
    [[nodiscard]] bool focus(QAccessible::Role role, const QString& name);

    /// Lets time go by in the window.
    static void wait(std::chrono::milliseconds time);

    enum class Look { light, dark };
    /// The window's picture in this look and size.
    [[nodiscard]] QImage picture(Look look, QSize size);

private:
    AppModel model_;
    Updater updater_;
    DesktopSettings desktopSettings_;
    QQmlApplicationEngine engine_;
    QQuickWindow* window_ = nullptr;
};

}  // namespace Brimlo
