#include "BrimloApp/Snapshot/Snapshot.h"

#include "BrimloApp/Snapshot/CannedState.h"
#include "BrimloApp/Snapshot/Scenes.h"
#include "BrimloApp/Snapshot/Stage.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>

#include <array>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace Brimlo::Snapshot {

namespace {

constexpr std::array kSizes{
    QSize{1000, 660},
    QSize{1440, 900}
};

/// Whether a picture has only one colour, as when the window could not be drawn.
bool isEmpty(const QImage& picture) {
    const QRgb first = picture.isNull() ? 0 : picture.pixel(0, 0);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != first) {
                return false;
            }
        }
    }
    return true;
}

bool fail(const QString& what) {
    std::cerr << "brimlo-app: " << what.toStdString() << '\n';
    return false;
}

bool save(const Scene& scene, const QDir& folder) {
    Stage stage;
    if (!stage.isOpen() || !scene.set(stage)) {
        return fail(scene.name + ": could not be shown");
    }
    for (const QSize size : kSizes) {
        for (const auto& [look, word] : {
                 std::pair{Stage::Look::light, "light"},
                 std::pair{Stage::Look::dark,  "dark" }
        }) {
            const QString file = QString{"%1-%2-%3x%4.png"}
                                     .arg(scene.name, word)
                                     .arg(size.width())
                                     .arg(size.height());
            const QImage picture = stage.dress(look, size).grabWindow();
            if (picture.size() != size || isEmpty(picture)) {
                return fail(file + ": the picture is empty");
            }
            if (!picture.save(folder.filePath(file), "PNG")) {
                return fail(folder.filePath(file) + ": could not be written");
            }
        }
    }
    return true;
}

}  // namespace

void isolate() {
    static const QTemporaryDir kHome;
    qputenv("HOME", kHome.path().toUtf8());
    qputenv("CFFIXED_USER_HOME", kHome.path().toUtf8());  // The equivalent on macOS.
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        qunsetenv(name);
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("TZ", "UTC");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
}

int saveAll(const QString& folder) {
    if (!QDir{}.mkpath(folder)) {
        fail(folder + ": could not be made");
        return EXIT_FAILURE;
    }
    CannedState::furnishHome();
    bool isWhole = true;
    for (const Scene& scene : allScenes()) {
        isWhole = save(scene, QDir{folder}) && isWhole;
    }
    return isWhole ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace Brimlo::Snapshot
