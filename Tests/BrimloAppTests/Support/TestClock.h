#pragma once

#include "BrimloApp/Shell/Clock.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace Brimlo::Testing {

/// A clock that stands still until it is told to go on.
class TestClock : public Clock {
public:
    [[nodiscard]] std::unique_ptr<Pending> schedule(
        std::chrono::milliseconds wait, Repeat repeat, std::function<void()> task) override;

    /// Lets so much time pass, and runs what is due on the way, each at its own time.
    void advance(std::chrono::milliseconds time);

    /// How many tasks wait.
    [[nodiscard]] std::size_t waiting() const { return tasks_->size(); }

private:
    struct Task {
        std::chrono::milliseconds due;
        std::chrono::milliseconds wait;
        Repeat repeat;
        std::function<void()> run;
    };
    using Tasks = std::map<std::int64_t, Task>;
    class Handle;

    std::chrono::milliseconds now_{0};
    std::int64_t lastID_ = 0;
    std::shared_ptr<Tasks> tasks_ = std::make_shared<Tasks>();  ///< Handles may outlive the clock.
};

}  // namespace Brimlo::Testing
