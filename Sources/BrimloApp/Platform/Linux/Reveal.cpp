#include "BrimloApp/Platform/Reveal.h"

#include "BrimloCore/Models/FileUrl.h"
#include "BrimloCore/Support/Path.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>

#include <filesystem>
#include <set>

namespace Brimlo::Platform {
namespace {

using Open = std::function<bool(const QUrl& folder)>;

/// Whether any could be opened.
bool openFolders(const std::vector<std::string>& paths, const Open& open) {
    constexpr std::size_t kMostFolders = 5;  // Each is a window.
    std::set<std::string_view> folders;
    bool isAnyOpen = false;
    for (const std::string& path : paths) {
        const std::string_view folder = Path::parent(path);
        std::error_code error;
        // A file in the place of the folder would be opened as what it is, which may be to run it.
        if (folders.size() < kMostFolders && std::filesystem::is_directory(folder, error) &&
            folders.insert(folder).second) {
            const std::string address = FileUrl::fromPath(folder);
            isAnyOpen = open(QUrl::fromEncoded(QByteArray::fromStdString(address))) || isAnyOpen;
        }
    }
    return isAnyOpen;
}

/// What every file manager answers to; the bus starts one if none runs.
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

}  // namespace

void reveal(
    const std::vector<std::string>& paths, const std::function<void()>& failed, const Open& open) {
    const auto openOrTell = [=] {
        if (!openFolders(paths, open)) {
            failed();
        }
    };
    constexpr int kLongestMilliseconds = 3000;
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openOrTell();  // The end of such a call would never be told.
        return;
    }
    const auto call = bus.asyncCall(request(paths), kLongestMilliseconds);
    auto* answer = new QDBusPendingCallWatcher(call, QCoreApplication::instance());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, [openOrTell, answer] {
        answer->deleteLater();
        if (answer->isError()) {
            openOrTell();
        }
    });
}

}  // namespace Brimlo::Platform
