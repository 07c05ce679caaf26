#include "BrimloApp/Platform/DesktopSettings.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <utility>

#import <AppKit/AppKit.h>

// Qt itself follows the system's appearance with its palette. The rest is asked when the user comes
// back to the window, for example from the system's settings.

namespace Brimlo {

DesktopSettings::DesktopSettings(QObject* parent)
    : QObject{parent} {
    QCoreApplication::instance()->installEventFilter(this);
    update();
}

bool DesktopSettings::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange ||
        event->type() == QEvent::ApplicationStateChange) {
        update();
    }
    return QObject::eventFilter(watched, event);
}

void DesktopSettings::update() {
    const auto set = [this](auto& field, auto value, auto changed) {
        if (field != value) {
            field = std::move(value);
            Q_EMIT(this->*changed)();
        }
    };
    constexpr int kHalf = 128;
    const QPalette palette = QGuiApplication::palette();
    @autoreleasepool {
        NSWorkspace* workspace = NSWorkspace.sharedWorkspace;
        set(reduceMotion_,
            workspace.accessibilityDisplayShouldReduceMotion != NO,
            &DesktopSettings::reduceMotionChanged);
        set(highContrast_,
            workspace.accessibilityDisplayShouldIncreaseContrast != NO,
            &DesktopSettings::highContrastChanged);
    }
    set(isDark_, palette.window().color().lightness() < kHalf, &DesktopSettings::isDarkChanged);
    set(accent_, palette.highlight().color(), &DesktopSettings::accentChanged);
}

}  // namespace Brimlo
