#include "BrimloApp/Platform/SharedWindow.h"

#include "BrimloApp/Platform/Linux/ApplicationInterface.h"

#include <QtDBus/QDBusConnection>

namespace Brimlo {

bool SharedWindow::handOver(const WindowRequest& request) {
    constexpr int kLongestMilliseconds = 3000;
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return false;
    }
    // Before the name, with which the calls come. Owned by this object.
    new ApplicationInterface{*this};  // NOLINT(cppcoreguidelines-owning-memory)
    bus.registerObject(ApplicationInterface::kPath, this);
    if (bus.registerService(ApplicationInterface::kName)) {
        return false;
    }
    bus.unregisterObject(ApplicationInterface::kPath);
    const QDBusMessage answer =
        bus.call(ApplicationInterface::call(request), QDBus::BlockWithGui, kLongestMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage;
}

}  // namespace Brimlo
