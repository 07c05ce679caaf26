#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVariant>

namespace Brimlo {

/// The desktop's settings portal (org.freedesktop.portal.Settings).
///
/// It is queried at once, and again whenever a process takes its name, because portals start late
/// and restart. Nothing waits for it; an absent or silent portal is no error. Main thread.
class SettingsPortal : public QObject {
    Q_OBJECT
public:
    /// `wanted` holds settings as "NAMESPACE KEY".
    SettingsPortal(QDBusConnection bus, QStringList wanted, QObject* parent);
Q_SIGNALS:
    /// The value of a wanted setting, unwrapped from its variants but otherwise unchecked.
    void told(const QString& setting, const QVariant& value);

private:
    Q_SLOT void hear(const QString& nameSpace, const QString& key, const QDBusVariant& value);
    void readAll();
    void read(const QString& setting, const QString& method);

    QDBusConnection bus_;
    QStringList wanted_;
};

}  // namespace Brimlo
