#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVariant>

namespace Brimlo {

/// What the settings portal of the desktop says (org.freedesktop.portal.Settings).
///
/// It is asked at once, and again whenever a process takes its name: portals start late and are
/// restarted. Nothing waits for it, and one that is absent or silent is no failure. Main thread.
class SettingsPortal : public QObject {
    Q_OBJECT
public:
    /// `wanted` holds settings by namespace and key with a space between.
    SettingsPortal(QDBusConnection bus, QStringList wanted, QObject* parent);
Q_SIGNALS:
    /// A wanted setting has this value, out of its variants and else as it was sent: unchecked.
    void told(const QString& setting, const QVariant& value);

private:
    Q_SLOT void hear(const QString& nameSpace, const QString& key, const QDBusVariant& value);
    void readAll();
    void read(const QString& setting, const QString& method);

    QDBusConnection bus_;
    QStringList wanted_;
};

}  // namespace Brimlo
