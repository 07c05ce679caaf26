#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// The kinds of files for QML, by their index in the order of `FileKind`.
class FileKinds : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int count READ count CONSTANT)

public:
    [[nodiscard]] static int count();

    /// The word for the legend; that of the last kind for an index which is none.
    Q_INVOKABLE [[nodiscard]] static QString label(int kind);
    Q_INVOKABLE [[nodiscard]] static QColor color(int kind);
};

}  // namespace Brimlo
