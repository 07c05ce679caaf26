#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// Folders as the screens choose them: by paths in the model, by addresses in dialogs and drops.
class Places : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString home READ home CONSTANT)

public:
    [[nodiscard]] static QString home();

    /// The last part of a path; the root is itself.
    Q_INVOKABLE [[nodiscard]] static QString name(const QString& path);
    /// Whether it is the address of a folder of this machine that is there now.
    Q_INVOKABLE [[nodiscard]] static bool isFolder(const QUrl& address);
    Q_INVOKABLE [[nodiscard]] static QUrl address(const QString& path);
    /// Empty for the address of something elsewhere.
    Q_INVOKABLE [[nodiscard]] static QString path(const QUrl& address);
};

}  // namespace Brimlo
