import QtQuick
import QtQuick.Layouts

// The content of a menu item or a picker's entry.
RowLayout {
    id: line

    property string text
    property string symbol
    property string shortcut
    property bool checkable: false
    property bool checked: false

    spacing: 8

    Icon {
        symbol: "checkmark"
        visible: line.checkable
        opacity: line.checked ? 1 : 0
        size: 14
        color: Theme.accentText
    }
    Icon {
        symbol: line.symbol
        visible: symbol !== ""
        size: 15
        color: Theme.secondaryText
    }
    Label {
        text: line.text
        Layout.fillWidth: true
        Accessible.ignored: true
    }
    Label {
        text: line.shortcut
        visible: text !== ""
        secondary: true
        font.pixelSize: Theme.small
        Layout.leftMargin: Theme.wide
        Accessible.ignored: true
    }
}
