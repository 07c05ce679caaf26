#include "BrimloApp/Platform/SystemWords.h"

#include "BrimloCore/Platform/Privacy.h"

namespace Brimlo {

QString SystemWords::bootVolume() {
    return tr("System disk");
}

QString SystemWords::fileManager() {
    return tr("Files");
}

bool SystemWords::hasPrivacyPage() {
    return !Platform::privacySettingsAddress().empty();
}

QString SystemWords::menuBar() {
    return {};
}

}  // namespace Brimlo
