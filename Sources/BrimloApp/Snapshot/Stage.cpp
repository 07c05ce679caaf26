#include "BrimloApp/Snapshot/Stage.h"

#include "BrimloApp/Shell/OpenWindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QAccessible>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPalette>
#include <QtQml/QQmlExpression>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

/// For bindings, layouts and what follows them one turn of the event loop later.
constexpr auto kRest = 80ms;

/// A model that reaches nothing of this machine but the home folder.
Surroundings nowhere() {
    const std::string home = QDir::homePath().toStdString();
    return {
        .clock = &Clock::system(),
        .cli = {.resources = home + "/resources", .link = home + "/bin/brimlo", .authorizers = {}},
        .docker = {                 }
    };
}

/// The first visible item of that role and name at or below `top`, in the order of the screen.
QAccessibleInterface* find(
    QAccessibleInterface* top, const QAccessible::Role role, const QString& name) {
    if (top == nullptr || top->state().invisible) {
        return nullptr;
    }
    if (top->role() == role && top->text(QAccessible::Name) == name) {
        return top;
    }
    for (int i = 0; i < top->childCount(); ++i) {
        if (QAccessibleInterface* const found = find(top->child(i), role, name)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

Stage::Stage()
    : model_{nowhere()}
    , updater_{UpdateSource::ofThisBuild()}
    , desktopSettings_{nullptr} {
    window_ = openWindow(engine_, model_, updater_, desktopSettings_);
    if (window_ == nullptr) {
        return;
    }
    // Nothing is to be caught half-way.
    QQmlExpression{qmlContext(window_), window_, "Theme.reduceMotion = true"}.evaluate();
    window_->resize(window_->minimumSize());
    wait(kRest);
}

void Stage::press(const Qt::Key key, const Qt::KeyboardModifiers modifiers) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event{type, key, modifiers};
        QCoreApplication::sendEvent(window_, &event);
    }
    wait(kRest);
}

bool Stage::press(const QAccessible::Role role, const QString& name) {
    auto* const control = find(QAccessible::queryAccessibleInterface(window_), role, name);
    if (control == nullptr || control->actionInterface() == nullptr) {
        return false;
    }
    control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    wait(kRest);
    return true;
}

bool Stage::focus(const QAccessible::Role role, const QString& name) {
    auto* const control = find(QAccessible::queryAccessibleInterface(window_), role, name);
    auto* const item = qobject_cast<QQuickItem*>(control != nullptr ? control->object() : nullptr);
    if (item == nullptr) {
        return false;
    }
    item->forceActiveFocus(Qt::TabFocusReason);
    wait(kRest);
    return true;
}

void Stage::wait(const std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

QImage Stage::picture(const Look look, const QSize size) {
    const bool isDark = look == Look::dark;
    QGuiApplication::setPalette(QPalette{isDark ? Qt::black : Qt::white});
    window_->resize(size);
    wait(kRest);
    return window_->grabWindow();
}

}  // namespace Brimlo
