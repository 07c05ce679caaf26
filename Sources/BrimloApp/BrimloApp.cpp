#include "BrimloApp/Platform/Desktop.h"
#include "BrimloApp/Platform/DesktopSettings.h"
#include "BrimloApp/Platform/SharedWindow.h"
#include "BrimloApp/Settings/Updater.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloApp/Shell/AppWindow.h"
#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/WindowCloser.h"
#include "BrimloApp/Shell/WindowRequest.h"
#include "BrimloApp/Snapshot/Snapshot.h"
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
#include <string>
#include <string_view>

namespace {

using namespace Brimlo;

void introduce() {
    QGuiApplication::setApplicationName("brimlo");
    QGuiApplication::setApplicationDisplayName("Brimlo");
    QGuiApplication::setApplicationVersion(BRIMLO_VERSION);
    QGuiApplication::setDesktopFileName("app.brimlo.brimlo");
    QGuiApplication::setWindowIcon(QIcon{":/qt/qml/Brimlo/brimlo.svg"});
}

/// Draws in software if OpenGL would, unless the environment chooses.
void chooseDrawing() {
    const bool isChosen = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") ||
                          qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (!isChosen && Desktop::drawsInSoftware()) {
        qputenv("QT_QUICK_BACKEND", "software");
    }
}

/// Ends the program with a sentence where Qt would abort: no display answers.
void endForWantOfDisplay(
    QtMsgType type, const QMessageLogContext& /*where*/, const QString& /*text*/) {
    if (type == QtFatalMsg) {
        std::fputs(
            "brimlo: There is no display to open a window on. \"brimlo\" does the same on a "
            "terminal.\n",
            stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

constexpr int kWrongUsage = 2;

/// Opens the window, unless another start of the application has it; returns when it is closed and
/// no file is being changed any more.
int run() {
    auto request = WindowRequest::ofWords(QCoreApplication::arguments().sliced(1));
    if (!request) {
        std::fprintf(stderr, "brimlo: %s\n", qPrintable(request.error()));
        return kWrongUsage;
    }
    request->token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    SharedWindow shared;
    if (shared.handOver(*request)) {
        return EXIT_SUCCESS;
    }
    AppModel model{Surroundings{}};
    Updater updater{UpdateSource::ofThisBuild()};
    DesktopSettings desktopSettings{nullptr};
    const WindowCloser closer{model};

    QQmlApplicationEngine engine;
    engine.setInitialProperties(AppWindow::lastSize());
    QWindow* window = AppWindow::open(engine, model, updater, desktopSettings);
    if (window == nullptr) {
        return EXIT_FAILURE;
    }
    const AppWindow::SizeKeeper sizeKeeper{*window};
    Desktop::joinFrame(*window);
    QObject::connect(&shared, &SharedWindow::asked, window, [&](const WindowRequest& asked) {
        asked.meet(model);
        asked.raise(*window);
    });
    request->meet(model);
    updater.startAutomaticChecks();
    return QGuiApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    using namespace std::chrono_literals;

    Platform::prepareProcess();
    // For developers: "--snapshot FOLDER" saves pictures of all screens.
    const std::span arguments{argv, static_cast<std::size_t>(argc)};
    const bool isSnapshot = argc == 3 && std::string_view{arguments[1]} == "--snapshot";
    if (isSnapshot) {
        Snapshot::isolate();
    }
    // Before Qt, which also stores files in the home folder.
    if (const auto reason = StoragePaths::reasonNotToStart()) {
        std::fprintf(stderr, "brimlo: %s\n", reason->c_str());
        return EXIT_FAILURE;
    }
    qInstallMessageHandler(endForWantOfDisplay);
    const QGuiApplication application{argc, argv};
    qInstallMessageHandler(nullptr);
    introduce();
    if (isSnapshot) {
        return Snapshot::saveAll(QString::fromLocal8Bit(arguments[2]));
    }
    chooseDrawing();
    const int code = run();
    // The remaining jobs only read, and their results are not needed.
    if (!Background::waitForDone(100ms)) {
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(code);
    }
    return code;
}
