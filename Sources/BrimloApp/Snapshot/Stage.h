#pragma once

#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QAccessible>
#include <QtQml/QQmlApplicationEngine>

#include <chrono>

class QQuickWindow;

namespace Brimlo {

/// The application's window with a model of its own, operated by code. Main thread.
class Stage {
public:
    /// Opens the window at the Overview, if possible.
    Stage();

    /// Whether there is a window. Everything below needs one.
    [[nodiscard]] bool isOpen() const { return window_ != nullptr; }

    [[nodiscard]] AppModel& model() { return model_; }

    /// Presses a key for the item with focus.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Presses a control the way assistive technology does; false if no visible one is found.
    [[nodiscard]] bool press(QAccessible::Role role, const QString& name);

    /// Focuses a list or a control; false if no visible one is found.
    [[nodiscard]] bool focus(QAccessible::Role role, const QString& name);

    /// Runs the event loop for some time.
    static void wait(std::chrono::milliseconds time);

    enum class Look { light, dark };
    /// Gives the window this look and size, and text of so many times the usual size.
    QQuickWindow& dress(Look look, QSize size, double textScale = 1);

private:
    /// Runs JavaScript in the window.
    void evaluate(const QString& expression);

    AppModel model_;
    Updater updater_;
    DesktopSettings desktopSettings_;
    QQmlApplicationEngine engine_;
    QQuickWindow* window_ = nullptr;
};

}  // namespace Brimlo
