#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace Brimlo {

/// Where QML finds the picture of a symbol. Its making adds the pictures to the engine.
class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static Symbols* create(QQmlEngine* engine, QJSEngine* scripts);

    /// The picture's address, empty for a symbol that nobody drew.
    Q_INVOKABLE [[nodiscard]] static QUrl source(
        const QString& symbol, const QColor& color, double strokeWidth);

private:
    // Not to be made without an engine: QML would then pass `create` by.
    Symbols() = default;
};

}  // namespace Brimlo
