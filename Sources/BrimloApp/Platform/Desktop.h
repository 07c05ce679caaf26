#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <string>
#include <vector>

class QWindow;

namespace Brimlo {

/// The desktop in which the application runs: its file manager, its window frames, and the words
/// in which the screens speak of it. Main thread.
class Desktop : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(QString bootVolume READ bootVolume CONSTANT)
    Q_PROPERTY(QString fileManager READ fileManager CONSTANT)
    Q_PROPERTY(bool hasPrivacyPage READ hasPrivacyPage CONSTANT)
    Q_PROPERTY(QString menuBar READ menuBar CONSTANT)

public:
    /// The name of the volume that the system boots from.
    [[nodiscard]] static QString bootVolume();
    /// The name of the file manager.
    [[nodiscard]] static QString fileManager();
    /// Whether the system's settings have a page on which programs may read which files.
    [[nodiscard]] static bool hasPrivacyPage();
    /// The QML file of the menu bar at the top of the screen; empty where the menu is in the
    /// window.
    [[nodiscard]] static QString menuBar();

    using OpenFolder = std::function<bool(const QUrl& folder)>;
    /// Selects entries in the file manager, each in its folder, and returns at once. No entry is
    /// opened itself. `paths` are absolute and standardized.
    ///
    /// If no file manager answers within three seconds, `open` opens the folders of the entries, a
    /// few at most. If `open` fails for all of them, `failed` is called.
    static void reveal(
        const std::vector<std::string>& paths,
        const std::function<void()>& failed,
        const OpenFolder& open = QDesktopServices::openUrl);

    /// Whether OpenGL would draw with the processor, which is slower than Qt's own software
    /// renderer. Asks the system's OpenGL; call it after the application object is made and before
    /// the first window.
    [[nodiscard]] static bool drawsInSoftware();

    /// Merges the frame of a window with its content, where the application may draw in the frame.
    /// Call it once the window is visible.
    static void joinFrame(QWindow& window);

    /// The folder of the packaged application's resources, standardized; it may not exist.
    [[nodiscard]] static std::string resourceFolder();
};

}  // namespace Brimlo
