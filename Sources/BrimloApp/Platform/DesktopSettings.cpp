#include "BrimloApp/Platform/DesktopSettings.h"

namespace Brimlo {

DesktopSettings* DesktopSettings::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    auto* const settings = engine->property("desktopSettings").value<DesktopSettings*>();
    QJSEngine::setObjectOwnership(settings, QJSEngine::CppOwnership);
    return settings;
}

}  // namespace Brimlo
