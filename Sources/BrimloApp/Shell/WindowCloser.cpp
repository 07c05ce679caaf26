#include "BrimloApp/Shell/WindowCloser.h"

#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Shell/AppModel.h"

#include <QtCore/QEvent>
#include <QtCore/QSocketNotifier>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

/// The pipe by which a signal reaches the event loop: a handler may do no more than write. Made
/// once and never closed, since a signal may come at any time.
std::array<int, 2>& signalPipe() {
    static std::array<int, 2> ends{-1, -1};
    return ends;
}

void passOn(int /*signal*/) {
    const char byte = 0;
    static_cast<void>(!write(signalPipe()[1], &byte, 1));
}

bool openPipe() {
    auto& ends = signalPipe();
    if (ends[0] >= 0) {
        return true;
    }
    if (pipe(ends.data()) != 0) {
        return false;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

/// Ignored signals, as under nohup, stay ignored.
void handle(int signal, void (*handler)(int)) {
    struct sigaction action{};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_IGN) {
        action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigaction(signal, &action, nullptr);
    }
}

}  // namespace

WindowCloser::WindowCloser(const AppModel& model, Clock& clock)
    : model_{model}
    , clock_{clock} {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, this, [this] {
        isClosed_ = true;
        endIfIdle();
    });
    // Queued, since other work may follow at once.
    connect(&model, &AppModel::busyChanged, this, &WindowCloser::endIfIdle, Qt::QueuedConnection);
    connect(
        model.cleanup(),
        &Cleanup::progressChanged,
        this,
        &WindowCloser::endIfIdle,
        Qt::QueuedConnection);
    listenToSignals();
}

WindowCloser::~WindowCloser() {
    for (const int signal : kSignals) {
        handle(signal, SIG_DFL);
    }
}

void WindowCloser::listenToSignals() {
    if (!openPipe()) {
        return;
    }
    auto* listener = new QSocketNotifier{signalPipe()[0], QSocketNotifier::Read, this};
    connect(listener, &QSocketNotifier::activated, this, [](QSocketDescriptor end) {
        char byte = 0;
        while (read(static_cast<int>(end), &byte, 1) == 1) {
            QEvent quit{QEvent::Quit};
            QCoreApplication::sendEvent(qGuiApp, &quit);
        }
    });
    for (const int signal : kSignals) {
        handle(signal, passOn);
    }
}

bool WindowCloser::eventFilter(QObject* to, QEvent* event) {
    if (to != qGuiApp || event->type() != QEvent::Quit || isIdle() || deadline_) {
        return false;
    }
    deadline_ =
        clock_.schedule(kLongestWait, Clock::Repeat::once, [] { QCoreApplication::exit(); });
    isClosed_ = true;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        window->close();
    }
    event->ignore();
    return true;
}

bool WindowCloser::isIdle() const {
    return !model_.cleanup()->isCleaning() && model_.busy().isEmpty();
}

void WindowCloser::endIfIdle() const {
    if (isClosed_ && isIdle()) {
        QCoreApplication::exit();
    }
}

}  // namespace Brimlo
