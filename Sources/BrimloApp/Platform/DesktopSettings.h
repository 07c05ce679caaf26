#pragma once

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtQml/QQmlEngine>
#include <QtQml/qqmlregistration.h>

class QDBusConnection;

namespace Brimlo {

/// The user's settings for the whole desktop that affect how the window looks and moves.
///
/// Starts with the defaults and queries the desktop without waiting; answers and later changes
/// arrive through the event loop. A missing or malformed setting has its default. Each property
/// notifies only when its value changes. Make it after the application object. Main thread.
class DesktopSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY reduceMotionChanged)
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY accentChanged)
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY fontFamilyChanged)
    Q_PROPERTY(double fontScale READ fontScale NOTIFY fontScaleChanged)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY highContrastChanged)
public:
    explicit DesktopSettings(QObject* parent);
    /// Queries over `bus` instead of the session bus.
    explicit DesktopSettings(const QDBusConnection& bus, QObject* parent = nullptr);

    /// QML's singleton: the object in the engine's property "desktopSettings".
    [[nodiscard]] static DesktopSettings* create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
        auto* settings = engine->property("desktopSettings").value<DesktopSettings*>();
        QJSEngine::setObjectOwnership(settings, QJSEngine::CppOwnership);
        return settings;
    }

    /// Whether animations are off; false by default.
    [[nodiscard]] bool reduceMotion() const { return reduceMotion_; }
    /// Whether the dark theme is preferred; by default if the application's palette is dark.
    [[nodiscard]] bool isDark() const { return isDark_; }
    /// The accent colour; invalid if the desktop has none.
    [[nodiscard]] QColor accent() const { return accent_; }
    /// The desktop's font family, if installed; otherwise empty, for our own.
    [[nodiscard]] QString fontFamily() const { return fontFamily_; }
    /// The scale of texts, 0.75 to 3; 1 is normal.
    [[nodiscard]] double fontScale() const { return fontScale_; }
    /// Whether high contrast is preferred; false by default.
    [[nodiscard]] bool highContrast() const { return highContrast_; }

Q_SIGNALS:
    void reduceMotionChanged();
    void isDarkChanged();
    void accentChanged();
    void fontFamilyChanged();
    void fontScaleChanged();
    void highContrastChanged();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;  // For the palette.
    void update();

    QHash<QString, QVariant> told_;  ///< By the desktop's names, unchecked.
    bool reduceMotion_ = false;
    bool isDark_ = false;
    QColor accent_;
    QString fontFamily_;
    double fontScale_ = 1;
    bool highContrast_ = false;
};

}  // namespace Brimlo
