#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Platform/Graphics.h"
#include "BrimloApp/Platform/WindowFrame.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloApp/Shell/OpenWindow.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/WindowCloser.h"
#include "BrimloApp/Shell/WindowSize.h"
#include "BrimloApp/Snapshot/SnapshotRun.h"
#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

using namespace Brimlo;

void introduce() {
    QGuiApplication::setApplicationName("brimlo");
    QGuiApplication::setApplicationDisplayName("Brimlo");
    QGuiApplication::setApplicationVersion(BRIMLO_VERSION);
    QGuiApplication::setDesktopFileName("brimlo");
    QGuiApplication::setWindowIcon(QIcon{":/qt/qml/Brimlo/brimlo.svg"});
}

/// Who names a way of drawing in the environment gets it; else the quickest is taken.
void chooseDrawing() {
    const bool isChosen = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") ||
                          qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!isChosen && Platform::drawsInSoftware()) {
        qputenv("QT_QUICK_BACKEND", "software");
    }
}

/// Shows the window and returns when it is closed and what must not break off is done.
int run() {
    AppModel model{Surroundings{}};
    Updater updater{UpdateSource::ofThisBuild()};
    DesktopSettings desktopSettings{nullptr};
    const WindowCloser closer{model};

    QQmlApplicationEngine engine;
    engine.setInitialProperties(WindowSize::last());
    QWindow* const window = openWindow(engine, model, updater, desktopSettings);
    if (window == nullptr) {
        return EXIT_FAILURE;
    }
    const WindowSize size{*window};
    Platform::joinFrame(*window);
    updater.startAutomaticChecks();
    return QGuiApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    using namespace std::chrono_literals;

    Platform::prepareProcess();
    // For developers: "--snapshot FOLDER" saves pictures of all screens there.
    const std::span arguments{argv, static_cast<std::size_t>(argc)};
    const bool isSnapshot = argc == 3 && std::string_view{arguments[1]} == "--snapshot";
    if (isSnapshot) {
        SnapshotRun::isolate();
    }
    // Before Qt, which keeps files in the home, too.
    if (const auto reason = StoragePaths::reasonNotToStart()) {
        std::fprintf(stderr, "brimlo: %s\n", reason->c_str());
        return EXIT_FAILURE;
    }
    const QGuiApplication application{argc, argv};
    introduce();
    if (isSnapshot) {
        return SnapshotRun::saveAll(QString::fromLocal8Bit(arguments[2]));
    }
    chooseDrawing();
    const int code = run();
    // What still runs only reads, and nobody waits for what it finds.
    if (!Background::waitForDone(100ms)) {
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(code);
    }
    return code;
}
