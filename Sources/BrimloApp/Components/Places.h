#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

namespace Brimlo {

/// Folders for QML, which the model knows by paths, dialogs and drops by URLs.
class Places : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString home READ home CONSTANT)

public:
    [[nodiscard]] static QString home();

    /// The last component of a path; "/" for the root.
    Q_INVOKABLE [[nodiscard]] static QString name(const QString& path);
    /// Whether it is the URL of an existing local folder.
    Q_INVOKABLE [[nodiscard]] static bool isFolder(const QUrl& address);
    Q_INVOKABLE [[nodiscard]] static QUrl address(const QString& path);
    /// Empty for a URL that is not local.
    Q_INVOKABLE [[nodiscard]] static QString path(const QUrl& address);
};

}  // namespace Brimlo
