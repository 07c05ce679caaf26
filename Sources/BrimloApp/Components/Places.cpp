#include "BrimloApp/Components/Places.h"

#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace Brimlo {

QString Places::home() {
    return fromPath(StoragePaths::home());
}

QString Places::name(const QString& path) {
    const QString name = QDir{path}.dirName();
    return name.isEmpty() ? path : name;
}

bool Places::isFolder(const QUrl& address) {
    return address.isLocalFile() && QFileInfo{address.toLocalFile()}.isDir();
}

QUrl Places::address(const QString& path) {
    return QUrl::fromLocalFile(path);
}

QString Places::path(const QUrl& address) {
    return address.toLocalFile();
}

}  // namespace Brimlo
