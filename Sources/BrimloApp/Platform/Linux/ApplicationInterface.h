#pragma once

#include "BrimloApp/Platform/SharedWindow.h"

#include <QtCore/QLatin1String>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtDBus/QDBusAbstractAdaptor>
#include <QtDBus/QDBusMessage>

namespace Brimlo {

/// How the desktop speaks to a window (Desktop Entry Specification 1.5, "D-Bus Activation"). Any
/// process of the user may call it, so it opens screens and does nothing else.
class ApplicationInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    /// The name on the bus, which is that of the desktop entry, and the object's path.
    static constexpr QLatin1String kName{"app.brimlo.brimlo"};
    static constexpr QLatin1String kPath{"/app/brimlo/brimlo"};

    /// The call that asks for this.
    [[nodiscard]] static QDBusMessage call(const WindowRequest& request);

    /// `window` tells what was asked for.
    explicit ApplicationInterface(SharedWindow& window);

    // NOLINTBEGIN(readability-identifier-naming): the specification's names.
    Q_SLOT void Activate(const QVariantMap& platform);
    Q_SLOT void Open(const QStringList& addresses, const QVariantMap& platform);
    Q_SLOT void ActivateAction(
        const QString& action, const QVariantList& parameters, const QVariantMap& platform);
    // NOLINTEND(readability-identifier-naming)

private:
    void tell(WindowRequest request, const QVariantMap& platform);

    SharedWindow& window_;
};

}  // namespace Brimlo
