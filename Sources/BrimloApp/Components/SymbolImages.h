#pragma once

#include <QtQuick/QQuickImageProvider>

namespace Brimlo {

/// Draws symbols in any colour and size, sharp at every scale of the screen.
///
/// An image's id is "SYMBOL/AARRGGBB/STROKE": the symbol's name, the colour, and the width of the
/// strokes in a drawing of 24 units. Whatever can't be read of it, and a symbol that the table
/// doesn't have, gives a picture without a mark.
class SymbolImages : public QQuickImageProvider {
public:
    SymbolImages()
        : QQuickImageProvider(QQuickImageProvider::Image) {}

    /// Without a requested size it is 24 pixels square.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace Brimlo
