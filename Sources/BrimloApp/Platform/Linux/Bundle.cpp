#include "BrimloApp/Platform/Bundle.h"

#include "BrimloCore/Support/Path.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

namespace Brimlo::Platform {

std::string resourceFolder() {
    const QString folder = QCoreApplication::applicationDirPath() + "/../lib/brimlo";
    return Path::standardized(QFile::encodeName(folder).toStdString());
}

}  // namespace Brimlo::Platform
