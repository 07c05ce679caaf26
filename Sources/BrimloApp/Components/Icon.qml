import QtQuick
import Brimlo

// A symbol of the table, in one colour. Nothing is drawn for a name that isn't there.
Image {
    property string symbol
    property int size: 16
    property color color: Theme.text

    // The larger, the finer, so that all look equally strong.
    property real weight: size >= 28 ? 1.5 : size >= 20 ? 1.75 : 2

    source: Symbols.source(symbol, color, weight)
    sourceSize.width: size
    sourceSize.height: size
    width: size
    height: size
    Accessible.ignored: true
}
