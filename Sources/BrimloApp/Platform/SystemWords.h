#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// What the screens say otherwise on each system.
class SystemWords : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString bootVolume READ bootVolume CONSTANT)
    Q_PROPERTY(QString fileManager READ fileManager CONSTANT)
    Q_PROPERTY(bool hasPrivacyPage READ hasPrivacyPage CONSTANT)
    Q_PROPERTY(QString menuBar READ menuBar CONSTANT)

public:
    /// The name of the volume that the system runs from.
    [[nodiscard]] static QString bootVolume();
    /// The name of the program that shows files and folders.
    [[nodiscard]] static QString fileManager();
    /// Whether the system's settings have a page on which programs may read which files.
    [[nodiscard]] static bool hasPrivacyPage();
    /// The file of the menus at the top of the screen; empty where a window has a menu of its own.
    [[nodiscard]] static QString menuBar();
};

}  // namespace Brimlo
