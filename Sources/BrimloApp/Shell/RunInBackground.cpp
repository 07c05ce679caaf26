#include "BrimloApp/Shell/RunInBackground.h"

#include <QtCore/QDeadlineTimer>

namespace Brimlo::Background {
namespace {

class Pool : public QThreadPool {
public:
    explicit Pool(const int mostThreads) { setMaxThreadCount(mostThreads); }
};

}  // namespace

QThreadPool& readers() {
    static Pool pool{8};  // More than the screens can start beside one another.
    return pool;
}

QThreadPool& writers() {
    static Pool pool{4};
    return pool;
}

bool waitForDone(const std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline{limit};
    return writers().waitForDone(static_cast<int>(deadline.remainingTime())) &&
           readers().waitForDone(static_cast<int>(deadline.remainingTime()));
}

}  // namespace Brimlo::Background
