#include "BrimloApp/Snapshot/Stage.h"

#include "BrimloApp/Shell/AppWindow.h"

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

/// For bindings and layouts, and whatever follows them in the next turn of the event loop.
constexpr auto kRest = 80ms;

/// Surroundings that reach nothing of this machine but the home folder.
Surroundings nowhere() {
    const std::string home = QDir::homePath().toStdString();
    return {
        .clock = &Clock::system(),
        .cli = {.resources = home + "/resources", .link = home + "/bin/brimlo", .authorizers = {}},
        .docker = {},
        .suggestsByItself = false
    };
}

/// The first visible item with that role and name at or below `top`, in tab order.
QAccessibleInterface* find(QAccessibleInterface* top, QAccessible::Role role, const QString& name) {
    if (top == nullptr || top->state().invisible) {
        return nullptr;
    }
    if (top->role() == role && top->text(QAccessible::Name) == name) {
        return top;
    }
    for (int i = 0; i < top->childCount(); ++i) {
        if (QAccessibleInterface* found = find(top->child(i), role, name)) {
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
    window_ = AppWindow::open(engine_, model_, updater_, desktopSettings_);
    if (window_ == nullptr) {
        return;
    }
    // No picture may show a running animation.
    evaluate("Theme.reduceMotion = true");
    window_->resize(window_->minimumSize());
    wait(kRest);
}

void Stage::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event{type, key, modifiers};
        QCoreApplication::sendEvent(window_, &event);
    }
    wait(kRest);
}

bool Stage::press(QAccessible::Role role, const QString& name) {
    auto* control = find(QAccessible::queryAccessibleInterface(window_), role, name);
    if (control == nullptr || control->actionInterface() == nullptr) {
        return false;
    }
    control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    wait(kRest);
    return true;
}

bool Stage::focus(QAccessible::Role role, const QString& name) {
    auto* control = find(QAccessible::queryAccessibleInterface(window_), role, name);
    auto* item = qobject_cast<QQuickItem*>(control != nullptr ? control->object() : nullptr);
    if (item == nullptr) {
        return false;
    }
    item->forceActiveFocus(Qt::TabFocusReason);
    wait(kRest);
    return true;
}

void Stage::wait(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

QQuickWindow& Stage::dress(Look look, QSize size, double textScale) {
    const bool isDark = look == Look::dark;
    QGuiApplication::setPalette(QPalette{isDark ? Qt::black : Qt::white});
    evaluate(QStringLiteral("Theme.fontScale = %1").arg(textScale));
    window_->resize(size);
    wait(kRest);
    return *window_;
}

void Stage::evaluate(const QString& expression) {
    QQmlExpression{qmlContext(window_), window_, expression}.evaluate();
}

}  // namespace Brimlo
