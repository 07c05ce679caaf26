#include "BrimloApp/Shell/RunInBackground.h"

#include <QtCore/QDeadlineTimer>

namespace Brimlo::Background {

namespace {

class Pool : public QThreadPool {
public:
    explicit Pool(int mostThreads) { setMaxThreadCount(mostThreads); }
};

}  // namespace

QThreadPool& readers() {
    static Pool pool{8};  // More than the screens can start at once.
    return pool;
}

QThreadPool& writers() {
    static Pool pool{4};
    return pool;
}

bool waitForDone(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline{limit};
    return writers().waitForDone(static_cast<int>(deadline.remainingTime())) &&
           readers().waitForDone(static_cast<int>(deadline.remainingTime()));
}

}  // namespace Brimlo::Background
