#include "BrimloApp/WindowCloser.h"

#include "BrimloApp/AppModel/AppModel.h"

#include <QtGui/QGuiApplication>

namespace Brimlo {

WindowCloser::WindowCloser(const AppModel& model)
    : model_{model} {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, this, [this] {
        isClosed_ = true;
        endIfIdle();
    });
    // Queued, since the work that ends may be followed by some other at once.
    connect(&model, &AppModel::busyChanged, this, &WindowCloser::endIfIdle, Qt::QueuedConnection);
    connect(
        &model, &AppModel::isCleaningChanged, this, &WindowCloser::endIfIdle, Qt::QueuedConnection);
}

void WindowCloser::endIfIdle() const {
    if (isClosed_ && !model_.isCleaning() && model_.busy().isEmpty()) {
        QCoreApplication::exit();
    }
}

}  // namespace Brimlo
