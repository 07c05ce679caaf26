#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace Brimlo {

/// When the timers of the application go off, so that a test need not wait for them. Main thread.
class Clock {
public:
    /// A task that waits for its time. Destroyed, it is cancelled.
    class Pending {
    public:
        Pending() = default;
        virtual ~Pending() = default;

        Pending(const Pending&) = delete;
        Pending& operator=(const Pending&) = delete;
        Pending(Pending&&) = delete;
        Pending& operator=(Pending&&) = delete;
    };

    enum class Repeat { once, always };

    Clock() = default;
    virtual ~Clock() = default;

    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    Clock(Clock&&) = delete;
    Clock& operator=(Clock&&) = delete;

    /// Runs `task` on the main thread when `wait` has passed, once or after each such wait. The
    /// task may destroy its own handle.
    [[nodiscard]] virtual std::unique_ptr<Pending> schedule(
        std::chrono::milliseconds wait, Repeat repeat, std::function<void()> task) = 0;

    /// The clock on the wall, driven by the event loop.
    [[nodiscard]] static Clock& system();
};

}  // namespace Brimlo
