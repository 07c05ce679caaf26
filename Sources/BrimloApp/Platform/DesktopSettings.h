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

/// What the user set for all of the desktop, so that our window can look and move accordingly.
///
/// Starts with the defaults and asks the desktop without waiting for it; its answers arrive by the
/// event loop, as do later changes. What it doesn't tell, or tells wrongly, has its default. Each
/// property signals only when it became another. Made after the application object. Main thread.
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
    /// Asks over `bus` in place of the session's own message bus.
    explicit DesktopSettings(const QDBusConnection& bus, QObject* parent = nullptr);

    /// Those that the engine's property "desktopSettings" holds, for QML's singleton of this name.
    [[nodiscard]] static DesktopSettings* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Whether nothing should slide or fade; false by default.
    [[nodiscard]] bool reduceMotion() const { return reduceMotion_; }
    /// Whether windows are to be dark; by default when the application's palette is.
    [[nodiscard]] bool isDark() const { return isDark_; }
    /// The colour of what is chosen or active; invalid when the desktop has none.
    [[nodiscard]] QColor accent() const { return accent_; }
    /// The installed family that the desktop's texts are set in; empty for our own.
    [[nodiscard]] QString fontFamily() const { return fontFamily_; }
    /// How large texts are to be, 0.75 to 3, where 1 is the usual size.
    [[nodiscard]] double fontScale() const { return fontScale_; }
    /// Whether lines and texts should stand out more; false by default.
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

    QHash<QString, QVariant> told_;  ///< By the desktop's own names, unchecked.
    bool reduceMotion_ = false;
    bool isDark_ = false;
    QColor accent_;
    QString fontFamily_;
    double fontScale_ = 1;
    bool highContrast_ = false;
};

}  // namespace Brimlo
