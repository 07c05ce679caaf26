#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace Brimlo {

/// The timers of the application, so that tests need not wait. Main thread.
class Clock {
public:
    /// A scheduled task. Destroying it cancels the task.
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

    /// Runs `task` on the main thread after `wait`, once or repeatedly. The task may destroy its
    /// own handle.
    [[nodiscard]] virtual std::unique_ptr<Pending> schedule(
        std::chrono::milliseconds wait, Repeat repeat, std::function<void()> task) = 0;

    /// The real clock, driven by the event loop.
    [[nodiscard]] static Clock& system();
};

}  // namespace Brimlo
