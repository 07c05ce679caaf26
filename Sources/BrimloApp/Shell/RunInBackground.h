#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtCore/QPointer>
#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>

#include <chrono>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace Brimlo {

/// The thread pools of the application. Any thread.
namespace Background {

/// For work that only reads: scans, searches, measuring the Trash. They can all run at once on any
/// number of processors, since they mostly wait for the disk.
[[nodiscard]] QThreadPool& readers();

/// For work that changes files, so that it never waits for a search.
[[nodiscard]] QThreadPool& writers();

/// Waits until both pools are idle; false after the time limit.
bool waitForDone(std::chrono::milliseconds limit = std::chrono::hours{1});

/// A job that its pool destroys, with everything it holds, on the thread that ran it.
template <typename Work>
class Job final : public QRunnable {
public:
    explicit Job(Work work)
        : work_{std::move(work)} {}
    void run() override { work_(); }

private:
    Work work_;
};

/// Starts `work` in `pool`; it need not be copyable.
template <typename Work>
void start(QThreadPool& pool, Work work) {
    pool.start(new Job<Work>{std::move(work)});  // The pool owns it.
}

}  // namespace Background

/// Posts `task` to the main thread, to be called with `object` unless that was destroyed. Any
/// thread; doesn't wait.
///
/// It is posted to the application object, because posting to `object` would race with its
/// destruction.
template <typename Object, typename Task>
void postHome(const QPointer<Object>& object, Task task) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [object, task = std::move(task)]() mutable {
            if (object) {
                task(*object);
            }
        },
        Qt::QueuedConnection);
}

/// Runs `work` on a thread of `pool`, then `home` with `object` and the result on the main thread.
///
/// `work` holds copies of everything it needs. If `object` was destroyed, the result is dropped,
/// also on the main thread.
template <typename Object, typename Work, typename Home>
void runIn(QThreadPool& pool, Object* object, Work work, Home home) {
    using Result = std::invoke_result_t<Work&>;
    struct State {
        Home home;
        std::optional<Result> result;
    };
    // Shared, because a posted function must be copyable and a result may not be. The worker moves
    // its only reference away, so that it can't be the last one.
    auto state = std::make_shared<State>(State{std::move(home), std::nullopt});
    Background::start(
        pool,
        [object = QPointer<Object>{object},
         work = std::move(work),
         state = std::move(state)]() mutable {
            state->result.emplace(work());
            postHome(object, [state = std::move(state)](Object& present) {
                state->home(present, std::move(*state->result));
            });
        });
}

/// Runs work that only reads.
template <typename Object, typename Work, typename Home>
void runInBackground(Object* object, Work work, Home home) {
    runIn(Background::readers(), object, std::move(work), std::move(home));
}

/// Runs work that changes files. It starts at once, whatever is being searched.
template <typename Object, typename Work, typename Home>
void changeInBackground(Object* object, Work work, Home home) {
    runIn(Background::writers(), object, std::move(work), std::move(home));
}

/// Destroys a value on a thread of the pool, such as a large tree with no other owner.
template <typename T>
void releaseInBackground(T value) {
    Background::start(Background::readers(), [held = std::optional{std::move(value)}]() mutable {
        held.reset();
    });
}

}  // namespace Brimlo
