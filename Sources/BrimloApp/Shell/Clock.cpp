#include "BrimloApp/Shell/Clock.h"

#include <QtCore/QTimer>

#include <utility>

namespace Brimlo {
namespace {

class PendingTimer : public Clock::Pending {
public:
    PendingTimer(
        const std::chrono::milliseconds wait,
        const Clock::Repeat repeat,
        std::function<void()> task) {
        timer_.setSingleShot(repeat == Clock::Repeat::once);
        timer_.setInterval(wait);
        // Called as a copy: the task may destroy this object, and with it the one stored.
        QObject::connect(
            &timer_, &QTimer::timeout, [task = std::move(task)] { std::function{task}(); });
        timer_.start();
    }

private:
    QTimer timer_;
};

class SystemClock : public Clock {
public:
    std::unique_ptr<Pending> schedule(
        const std::chrono::milliseconds wait,
        const Repeat repeat,
        std::function<void()> task) override {
        return std::make_unique<PendingTimer>(wait, repeat, std::move(task));
    }
};

}  // namespace

Clock& Clock::system() {
    static SystemClock clock;
    return clock;
}

}  // namespace Brimlo
