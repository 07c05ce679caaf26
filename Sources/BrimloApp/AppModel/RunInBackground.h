#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>

#include <memory>
#include <type_traits>
#include <utility>

namespace Brimlo {

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

/// Runs `work` on a thread of the pool, then `home` with `object` and the result on the main one.
///
/// `work` holds copies of all it needs. When `object` is gone by the end, the result is dropped,
/// on the main thread as well.
template <typename Object, typename Work, typename Home>
void runInBackground(Object* object, Work work, Home home) {
    // Shared, because the pool copies what it is given, and a result may not be copyable.
    auto shared = std::make_shared<std::pair<Work, Home>>(std::move(work), std::move(home));
    QThreadPool::globalInstance()->start([object = QPointer<Object>{object}, shared] {
        using Result = std::invoke_result_t<Work&>;
        auto result = std::make_shared<Result>(shared->first());
        postHome(object, [shared, result](Object& present) {
            shared->second(present, std::move(*result));
        });
    });
}

/// Destroys on a thread of the pool what would take long, such as a tree that nobody else holds.
template <typename T>
void releaseInBackground(T value) {
    auto shared = std::make_shared<T>(std::move(value));
    QThreadPool::globalInstance()->start([shared]() mutable { shared.reset(); });
}

}  // namespace Brimlo
