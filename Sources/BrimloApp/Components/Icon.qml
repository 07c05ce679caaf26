import QtQuick
import Brimlo

// A symbol in one colour. An unknown symbol is drawn as nothing.
Image {
    property string symbol
    property int size: 16
    property color color: Theme.text

    // Larger icons have thinner strokes, so that all look equally heavy.
    property real weight: size >= 28 ? 1.5 : size >= 20 ? 1.75 : 2

    source: Symbols.source(symbol, color, weight)
    sourceSize.width: size
    sourceSize.height: size
    width: size
    height: size
    Accessible.ignored: true
}
