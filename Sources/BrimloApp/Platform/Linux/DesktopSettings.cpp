#include "BrimloApp/Platform/DesktopSettings.h"

#include "BrimloApp/Platform/Linux/SettingsPortal.h"

#include <QtCore/QEvent>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Brimlo {

namespace {

const auto kColorScheme = QStringLiteral("org.freedesktop.appearance color-scheme");
const auto kAccentColor = QStringLiteral("org.freedesktop.appearance accent-color");
const auto kContrast = QStringLiteral("org.freedesktop.appearance contrast");
const auto kAnimations = QStringLiteral("org.gnome.desktop.interface enable-animations");
const auto kTextScaling = QStringLiteral("org.gnome.desktop.interface text-scaling-factor");
const auto kFontName = QStringLiteral("org.gnome.desktop.interface font-name");
constexpr double kUsualPoints = 11;  // The default of GNOME.

/// The value if it has exactly this type: QVariant would convert almost anything.
template <typename T>
T as(const QVariant& value, const T& otherwise) {
    return value.metaType() == QMetaType::fromType<T>() ? value.value<T>() : otherwise;
}

double factorOrOne(double value) {
    return std::isfinite(value) && value > 0 ? value : 1;
}

bool isDark(const QVariant& colorScheme) {
    const uint preferred =
        as(colorScheme, 0U);  // 1 is dark, 2 is light, anything else no preference.
    const bool isPaletteDark = QGuiApplication::palette().window().color().lightness() < 128;
    return preferred == 1 || (preferred != 2 && isPaletteDark);
}

/// A colour of three numbers from 0 to 1; otherwise invalid.
QColor color(const QVariant& value) {
    const auto argument = as(value, QDBusArgument());
    std::array<double, 3> parts{-1, -1, -1};
    if (argument.currentSignature() == QLatin1String("(ddd)")) {
        argument.beginStructure();
        argument >> parts[0] >> parts[1] >> parts[2];
        argument.endStructure();
    }
    if (!std::ranges::all_of(parts, [](double part) { return part >= 0 && part <= 1; })) {
        return {};
    }
    return QColor::fromRgbF(float(parts[0]), float(parts[1]), float(parts[2]));
}

/// The family in "Cantarell 11" or "Noto Sans, Sans Semi-Bold Italic 10.5", if it is installed.
QString family(const QString& font) {
    QStringList words = font.left(200).section(',', 0, 0).split(' ', Qt::SkipEmptyParts);
    // The start of the style is not marked, hence the longest prefix that is a family.
    while (!words.isEmpty() && !QFontDatabase::hasFamily(words.join(' '))) {
        words.removeLast();
    }
    return words.join(' ');
}

}  // namespace

DesktopSettings::DesktopSettings(QObject* parent)
    : DesktopSettings{QDBusConnection::sessionBus(), parent} {}

DesktopSettings::DesktopSettings(const QDBusConnection& bus, QObject* parent)
    : QObject{parent} {
    const auto* portal = new SettingsPortal(
        bus, {kColorScheme, kAccentColor, kContrast, kAnimations, kTextScaling, kFontName}, this);
    connect(portal, &SettingsPortal::told, this, [this](const auto& setting, const auto& value) {
        told_.insert(setting, value);
        update();
    });
    QCoreApplication::instance()->installEventFilter(this);
    update();
}

bool DesktopSettings::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) {
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
    const QString font = as(told_.value(kFontName), QString());
    const double scale = factorOrOne(as(told_.value(kTextScaling), 1.0)) *
                         factorOrOne(font.section(' ', -1).toDouble() / kUsualPoints);
    set(reduceMotion_, !as(told_.value(kAnimations), true), &DesktopSettings::reduceMotionChanged);
    set(isDark_, Brimlo::isDark(told_.value(kColorScheme)), &DesktopSettings::isDarkChanged);
    set(accent_, color(told_.value(kAccentColor)), &DesktopSettings::accentChanged);
    set(fontFamily_, family(font), &DesktopSettings::fontFamilyChanged);
    set(fontScale_, std::clamp(scale, 0.75, 3.0), &DesktopSettings::fontScaleChanged);
    set(highContrast_, as(told_.value(kContrast), 0U) == 1, &DesktopSettings::highContrastChanged);
}

}  // namespace Brimlo
