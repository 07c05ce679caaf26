import QtQuick
import Brimlo

// A symbol in one colour, which grows with the text beside it. An unknown symbol is drawn as nothing.
Image {
    property string symbol
    property int size: 16
    property int side: Theme.scaled(size)
    property color color: Theme.text

    // Larger icons have thinner strokes, so that all look equally heavy.
    property real weight: size >= 28 ? 1.5 : size >= 20 ? 1.75 : 2

    source: Symbols.source(symbol, color, weight)
    sourceSize.width: side
    sourceSize.height: side
    width: side
    height: side
    Accessible.ignored: true
}
