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

/// The threads of the application beside the main one. Any thread.
namespace Background {

/// For work that only reads: scans, searches, the measuring of the Trash. All of them can run at
/// once, however few processors there are, since they mostly wait for the disk.
[[nodiscard]] QThreadPool& readers();

/// For work that changes files, so that it never waits for a search to end.
[[nodiscard]] QThreadPool& writers();

/// Waits until neither pool has work; false when the limit has passed first.
bool waitForDone(std::chrono::milliseconds limit = std::chrono::hours{1});

/// A job that a pool destroys, with all that it holds, on the thread that has run it.
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

/// Posts `task` to the main thread, to be called with `object` unless that is gone by then. Any
/// thread; doesn't wait.
///
/// It goes by way of the application object: posting to `object` itself would race with its end.
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

/// Runs `work` on a thread of `pool`, then `home` with `object` and the result on the main one.
///
/// `work` holds copies of all it needs. When `object` is gone by the end, the result is dropped,
/// on the main thread as well.
template <typename Object, typename Work, typename Home>
void runIn(QThreadPool& pool, Object* object, Work work, Home home) {
    using Result = std::invoke_result_t<Work&>;
    struct State {
        Home home;
        std::optional<Result> result;
    };
    // Shared, because what is posted must be copyable, and a result may not be. The worker gives
    // its only handle away: none is left behind that could be the last.
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

/// The same for work that only reads.
template <typename Object, typename Work, typename Home>
void runInBackground(Object* object, Work work, Home home) {
    runIn(Background::readers(), object, std::move(work), std::move(home));
}

/// The same for work that changes files. It begins at once, whatever is being searched for.
template <typename Object, typename Work, typename Home>
void changeInBackground(Object* object, Work work, Home home) {
    runIn(Background::writers(), object, std::move(work), std::move(home));
}

/// Destroys on a thread of a pool what would take long, such as a tree that nobody else holds.
template <typename T>
void releaseInBackground(T value) {
    Background::start(Background::readers(), [held = std::optional{std::move(value)}]() mutable {
        held.reset();
    });
}

}  // namespace Brimlo
