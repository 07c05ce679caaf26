#pragma once

#include <QtCore/QObject>

namespace Brimlo {

class AppModel;

/// Ends the application once its last window is closed and the model does nothing that changes
/// files: what was begun there is brought to its end without a window. Main thread.
class WindowCloser : public QObject {
public:
    /// `model` must outlive this.
    explicit WindowCloser(const AppModel& model);

private:
    void endIfIdle() const;

    const AppModel& model_;
    bool isClosed_ = false;
};

}  // namespace Brimlo
