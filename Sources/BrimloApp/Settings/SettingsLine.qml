import QtQuick
import QtQuick.Layouts
import Brimlo

// A status: a symbol and a text, and buttons at the right.
RowLayout {
    id: line

    property string symbol
    property string text
    property color color: Theme.secondaryText
    default property alias actions: buttons.data

    spacing: 10
    Layout.fillWidth: true

    Icon {
        symbol: line.symbol
        visible: symbol !== ""
        color: line.color
    }
    Label {
        text: line.text
        wrapMode: Text.Wrap
        lineHeight: 1.15
        Layout.fillWidth: true
    }
    RowLayout {
        id: buttons

        spacing: Theme.tight
    }
}
