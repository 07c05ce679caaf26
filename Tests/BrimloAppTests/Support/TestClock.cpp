#include "BrimloAppTests/Support/TestClock.h"

#include <QtCore/QtGlobal>

#include <algorithm>
#include <utility>

namespace Brimlo::Testing {

class TestClock::Handle : public Clock::Pending {
public:
    Handle(std::shared_ptr<Tasks> tasks, const std::int64_t id)
        : tasks_{std::move(tasks)}
        , id_{id} {}
    ~Handle() override { tasks_->erase(id_); }
    Q_DISABLE_COPY_MOVE(Handle)

private:
    std::shared_ptr<Tasks> tasks_;
    std::int64_t id_;
};

std::unique_ptr<Clock::Pending> TestClock::schedule(
    const std::chrono::milliseconds wait, const Repeat repeat, std::function<void()> task) {
    tasks_->emplace(
        ++lastID_,
        Task{.due = now_ + wait, .wait = wait, .repeat = repeat, .run = std::move(task)});
    return std::make_unique<Handle>(tasks_, lastID_);
}

void TestClock::advance(const std::chrono::milliseconds time) {
    const auto until = now_ + time;
    for (;;) {
        const auto next = std::ranges::min_element(
            *tasks_, {}, [](const auto& entry) { return entry.second.due; });
        if (next == tasks_->end() || next->second.due > until) {
            break;
        }
        now_ = next->second.due;
        const std::function<void()> run = next->second.run;
        if (next->second.repeat == Repeat::once) {
            tasks_->erase(next);
        } else {
            next->second.due += next->second.wait;
        }
        run();
    }
    now_ = until;
}

}  // namespace Brimlo::Testing
