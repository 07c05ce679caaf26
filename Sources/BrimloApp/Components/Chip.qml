import QtQuick
import QtQuick.Layouts

// A short text in a tinted capsule.
Item {
    id: chip

    property string text
    property string symbol
    property color color: Theme.secondaryText
    property color ink: Theme.legible(color, Theme.mixed(Theme.dark ? Theme.popup : Theme.sidebar, color, 0.14))
    property string help

    implicitWidth: line.implicitWidth + 16
    implicitHeight: Math.max(20, words.implicitHeight + 5)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: help

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.faded(chip.color, 0.14)
    }
    RowLayout {
        id: line

        anchors.centerIn: parent
        spacing: 4

        Icon {
            symbol: chip.symbol
            visible: symbol !== ""
            size: 12
            color: chip.ink
        }
        Label {
            id: words

            text: chip.text
            color: chip.ink
            font.pixelSize: Theme.caption
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    }
    HoverHandler {
        id: pointer
    }
    HelpTip {
        text: chip.help
        shown: pointer.hovered
    }
}
