#include "BrimloApp/Shell/Clock.h"

#include <QtCore/QTimer>

#include <utility>

namespace Brimlo {

namespace {

class PendingTimer : public Clock::Pending {
public:
    PendingTimer(std::chrono::milliseconds wait, Clock::Repeat repeat, std::function<void()> task) {
        timer_.setSingleShot(repeat == Clock::Repeat::once);
        timer_.setInterval(wait);
        // A copy, because the task may destroy this object and the stored function with it.
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
        std::chrono::milliseconds wait, Repeat repeat, std::function<void()> task) override {
        return std::make_unique<PendingTimer>(wait, repeat, std::move(task));
    }
};

}  // namespace

Clock& Clock::system() {
    static SystemClock clock;
    return clock;
}

}  // namespace Brimlo
