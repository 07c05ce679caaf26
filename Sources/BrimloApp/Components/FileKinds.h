#pragma once

#include "BrimloCore/DiskScanner/FileKind.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

#include <string>

namespace Brimlo {

/// The kinds of files for QML, by their index in the order of `FileKind`.
class FileKinds : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int count READ count CONSTANT)

public:
    /// A kind's opaque colour in the treemap.
    [[nodiscard]] static QColor colorOf(FileKind kind);

    [[nodiscard]] static int count();

    /// The address of a regular file that holds a picture which can be decoded; empty for others.
    [[nodiscard]] static QUrl picture(const std::string& path);

    /// The word for the legend; "Other" for an index out of range.
    Q_INVOKABLE [[nodiscard]] static QString label(int kind);
    Q_INVOKABLE [[nodiscard]] static QColor color(int kind);
};

}  // namespace Brimlo
