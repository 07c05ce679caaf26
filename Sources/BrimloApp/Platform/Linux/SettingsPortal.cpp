#include "BrimloApp/Platform/Linux/SettingsPortal.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusServiceWatcher>

#include <utility>

namespace Brimlo {

namespace {

constexpr QLatin1String kService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String kReadOne("ReadOne");

/// The innermost value: `Read` wraps it in one variant more than `ReadOne`.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

}  // namespace

SettingsPortal::SettingsPortal(QDBusConnection bus, QStringList wanted, QObject* parent)
    : QObject{parent}
    , bus_{std::move(bus)}
    , wanted_{std::move(wanted)} {
    qRegisterMetaType<QDBusVariant>();  // Otherwise connecting the slot fails until the type is
                                        // used once.
    // Only from this service, so that no other process is believed. This waits for the bus to name
    // the service's owner, as every connection does, but not for the service, which may hang.
    const char* slot = SLOT(hear(QString, QString, QDBusVariant));
    bus_.connect(kService, kPath, kInterface, "SettingChanged", this, slot);
    const auto* watcher =
        new QDBusServiceWatcher(kService, bus_, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &SettingsPortal::readAll);
    readAll();
}

void SettingsPortal::hear(const QString& nameSpace, const QString& key, const QDBusVariant& value) {
    if (const QString setting = nameSpace + ' ' + key; wanted_.contains(setting)) {
        Q_EMIT told(setting, unwrapped(value.variant()));
    }
}

void SettingsPortal::readAll() {
    for (const QString& setting : std::as_const(wanted_)) {
        read(setting, kReadOne);
    }
}

void SettingsPortal::read(const QString& setting, const QString& method) {
    auto call = QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
    call << setting.section(' ', 0, 0) << setting.section(' ', 1);
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [=, this] {
        answer->deleteLater();
        if (!answer->isError()) {
            Q_EMIT told(setting, unwrapped(answer->reply().arguments().value(0)));
        } else if (method == kReadOne && answer->error().type() == QDBusError::UnknownMethod) {
            read(setting, "Read");  // The only method of version 1.
        }
    });
}

}  // namespace Brimlo
