#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickImageProvider>

#include <optional>
#include <span>
#include <string_view>

class QJSEngine;
class QQmlEngine;

namespace Brimlo {

/// The symbols of the screens and the files that they are drawn in.
///
/// A symbol is named by what it means to the screens and the core ("trash",
/// "checkmark.circle.fill"); the drawings are the SVG files in `icons`.
class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    struct Entry {
        std::string_view symbol;
        std::string_view file;  ///< Without folder and ".svg".
    };

    /// QML's singleton. Also adds `SymbolImages` to the engine.
    static Symbols* create(QQmlEngine* engine, QJSEngine* scripts);

    /// All symbols, sorted, each once.
    [[nodiscard]] static std::span<const Entry> entries();
    /// The file of a symbol, or nullopt if it has no drawing.
    [[nodiscard]] static std::optional<std::string_view> drawing(std::string_view symbol);

    /// The address of a symbol's image; empty for a symbol without a drawing.
    Q_INVOKABLE [[nodiscard]] static QUrl source(
        const QString& symbol, const QColor& color, double strokeWidth);

private:
    // Private, because QML calls a public default constructor instead of `create`.
    Symbols() = default;
};

/// Draws symbols in any colour and size, sharp at every scale of the screen.
///
/// An image's id is "SYMBOL/AARRGGBB/STROKE": the symbol, the colour, and the stroke width in a
/// drawing of 24 units. A malformed id and an unknown symbol give an empty image.
class SymbolImages : public QQuickImageProvider {
public:
    SymbolImages()
        : QQuickImageProvider{QQuickImageProvider::Image} {}

    /// 24 pixels square unless a size is requested.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace Brimlo
