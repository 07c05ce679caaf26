#include "BrimloApp/Platform/Linux/ApplicationInterface.h"

#include <utility>

namespace Brimlo {

namespace {

constexpr QLatin1String kInterface("org.freedesktop.Application");
constexpr QLatin1String kToken("activation-token");

}  // namespace

ApplicationInterface::ApplicationInterface(SharedWindow& window)
    : QDBusAbstractAdaptor{&window}
    , window_{window} {}

QDBusMessage ApplicationInterface::call(const WindowRequest& request) {
    const auto to = [](const char* method) {
        return QDBusMessage::createMethodCall(kName, kPath, kInterface, method);
    };
    QVariantMap platform;
    if (!request.token.isEmpty()) {
        platform[kToken] = request.token;
    }
    if (!request.folder.isEmpty()) {
        const QStringList addresses{QString::fromLatin1(request.folder.toEncoded())};
        return to("Open") << addresses << platform;
    }
    const QString action = request.action();
    return action.isEmpty() ? to("Activate") << platform
                            : to("ActivateAction") << action << QVariantList{} << platform;
}

void ApplicationInterface::Activate(const QVariantMap& platform) {
    tell({}, platform);
}

void ApplicationInterface::Open(const QStringList& addresses, const QVariantMap& platform) {
    tell(WindowRequest::ofAddresses(addresses), platform);
}

void ApplicationInterface::ActivateAction(
    const QString& action, const QVariantList& /*parameters*/, const QVariantMap& platform) {
    tell(WindowRequest::ofAction(action), platform);
}

void ApplicationInterface::tell(WindowRequest request, const QVariantMap& platform) {
    request.token = platform.value(kToken).toString();
    Q_EMIT window_.asked(request);
}

}  // namespace Brimlo
