#pragma once

#include "BrimloApp/Shell/Clock.h"

#include <QtCore/QObject>

#include <memory>

namespace Brimlo {

class AppModel;

/// Ends the application once its last window is closed and the model changes no files: running work
/// is finished without a window. Main thread.
///
/// A quit from outside, by the end of the desktop's session, the Dock or a signal (SIGTERM, SIGINT,
/// SIGHUP), closes the windows and waits likewise, but for at most `kLongestWait`, less than a
/// desktop gives a program; a second quit ends the application at once.
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
    std::unique_ptr<Clock::Pending> deadline_;  ///< Set by a quit from outside.
    bool isClosed_ = false;
};

}  // namespace Brimlo
