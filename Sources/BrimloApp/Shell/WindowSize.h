#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>

class QWindow;

namespace Brimlo {

/// Keeps the size of the window from one start to the next. Main thread.
class WindowSize : public QObject {
public:
    /// The properties with which the window opens as it was closed, none larger than the screen.
    /// Empty when nothing is known.
    [[nodiscard]] static QVariantMap last();

    /// Writes down how large the window is when it is closed. A maximized one leaves the size that
    /// it would have otherwise.
    explicit WindowSize(const QWindow& window);
};

}  // namespace Brimlo
