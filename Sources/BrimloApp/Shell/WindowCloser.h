#pragma once

#include "BrimloApp/Shell/Clock.h"

#include <QtCore/QObject>

#include <memory>

namespace Brimlo {

class AppModel;

/// Ends the application once its last window is closed and the model does nothing that changes
/// files: what was begun there is brought to its end without a window. Main thread.
///
/// A quit from outside, by the session's end, the Dock or a signal (SIGTERM, SIGINT, SIGHUP),
/// closes the windows and waits in the same way, but no longer than `kLongestWait`, which is less
/// than a session gives a program; a second one ends the application at once.
class WindowCloser : public QObject {
public:
    static constexpr std::chrono::seconds kLongestWait{60};

    /// `model` and `clock` must outlive this.
    explicit WindowCloser(const AppModel& model, Clock& clock = Clock::system());
    ~WindowCloser() override;

    Q_DISABLE_COPY_MOVE(WindowCloser)

    bool eventFilter(QObject* to, QEvent* event) override;

private:
    [[nodiscard]] bool isIdle() const;
    void endIfIdle() const;
    void listenToSignals();

    const AppModel& model_;
    Clock& clock_;
    std::unique_ptr<Clock::Pending> deadline_;  ///< Set once a quit from outside has come.
    bool isClosed_ = false;
};

}  // namespace Brimlo
