#include "BrimloApp/Platform/Desktop.h"

#include "BrimloCore/Models/FileUrl.h"
#include "BrimloCore/Platform/Privacy.h"
#include "BrimloCore/Support/Path.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>

namespace Brimlo {

namespace {

/// Opens the folders of `paths`; false if none could be opened.
bool openFolders(const std::vector<std::string>& paths, const Desktop::OpenFolder& open) {
    constexpr std::size_t kMostFolders = 5;  // Each is a window.
    std::set<std::string_view> folders;
    bool isAnyOpen = false;
    for (const std::string& path : paths) {
        const std::string_view folder = Path::parent(path);
        std::error_code error;
        // If a file stands where the folder was, opening it might run it.
        if (folders.size() < kMostFolders && std::filesystem::is_directory(folder, error) &&
            folders.insert(folder).second) {
            const std::string address = FileUrl::fromPath(folder);
            isAnyOpen = open(QUrl::fromEncoded(QByteArray::fromStdString(address))) || isAnyOpen;
        }
    }
    return isAnyOpen;
}

/// The D-Bus call that every file manager implements; the bus starts one if none is running.
QDBusMessage request(const std::vector<std::string>& paths) {
    const QString name = "org.freedesktop.FileManager1";
    QStringList addresses;
    for (const std::string& path : paths) {
        addresses.append(QString::fromStdString(FileUrl::fromPath(path)));
    }
    auto call =
        QDBusMessage::createMethodCall(name, "/org/freedesktop/FileManager1", name, "ShowItems");
    return call << addresses << QString();
}

/// Whether the kernel has a device file of a GPU. Without one, OpenGL, the slowest part of a start,
/// need not be loaded.
bool hasDevice() {
    return !QDir{"/dev/dri"}.entryList({"renderD*"}, QDir::System).isEmpty() ||
           QDir{}.exists("/dev/nvidia0");
}

/// The name of OpenGL's renderer; empty without OpenGL.
QByteArray renderer() {
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) {
        return {};
    }
    const auto* name = context.functions()->glGetString(GL_RENDERER);
    return QByteArray{reinterpret_cast<const char*>(name)}.toLower();  // NOLINT(*-reinterpret-cast)
}

}  // namespace

QString Desktop::bootVolume() {
    return tr("System disk");
}

QString Desktop::fileManager() {
    return tr("Files");
}

bool Desktop::hasPrivacyPage() {
    return !Platform::privacySettingsAddress().empty();
}

QString Desktop::menuBar() {
    return {};
}

void Desktop::reveal(
    const std::vector<std::string>& paths,
    const std::function<void()>& failed,
    const OpenFolder& open) {
    const auto openOrReport = [=] {
        if (!openFolders(paths, open)) {
            failed();
        }
    };
    constexpr int kLongestMilliseconds = 3000;
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openOrReport();  // Without a bus, a pending call never finishes.
        return;
    }
    const auto call = bus.asyncCall(request(paths), kLongestMilliseconds);
    auto* answer = new QDBusPendingCallWatcher(call, QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, [openOrReport, answer] {
        answer->deleteLater();
        if (answer->isError()) {
            openOrReport();
        }
    });
}

bool Desktop::drawsInSoftware() {
    constexpr std::array kProcessors{"llvmpipe", "softpipe", "swrast", "swiftshader", "software"};
    if (!hasDevice()) {
        return true;
    }
    const QByteArray name = renderer();
    return name.isEmpty() || std::ranges::any_of(kProcessors, [&](const char* processor) {
               return name.contains(processor);
           });
}

void Desktop::joinFrame(QWindow& /*window*/) {
    // The desktop draws the frame.
}

std::string Desktop::resourceFolder() {
    const QString folder = QCoreApplication::applicationDirPath() + "/../lib/brimlo";
    return Path::standardized(QFile::encodeName(folder).toStdString());
}

}  // namespace Brimlo
