#include "BrimloApp/Platform/SystemWords.h"

#include "BrimloCore/Platform/Privacy.h"

namespace Brimlo {

QString SystemWords::bootVolume() {
    return tr("Macintosh HD");
}

QString SystemWords::fileManager() {
    return tr("Finder");
}

bool SystemWords::hasPrivacyPage() {
    return !Platform::privacySettingsAddress().empty();
}

QString SystemWords::menuBar() {
    return QStringLiteral("MacMenuBar.qml");
}

}  // namespace Brimlo
