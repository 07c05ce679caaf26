#pragma once

#include "BrimloApp/Shell/WindowRequest.h"

#include <QtCore/QObject>

namespace Brimlo {

/// One window for one user of the desktop: a later start hands its request to the first one, and so
/// do the desktop's menus, by org.freedesktop.Application on the session bus. Without that bus, and
/// on systems that care for it themselves, each start has a window of its own. Main thread.
class SharedWindow : public QObject {
    Q_OBJECT
public:
    /// Whether the window that is open already took the request. Otherwise this process has the
    /// window from then on, and `asked` tells what others ask of it once the event loop runs. Waits
    /// a few seconds at most for a process that does not answer.
    [[nodiscard]] bool handOver(const WindowRequest& request);

Q_SIGNALS:
    void asked(const Brimlo::WindowRequest& request);
};

}  // namespace Brimlo
