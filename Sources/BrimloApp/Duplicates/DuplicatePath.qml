import QtQuick
import Brimlo

// One file of a group, and whether it stays. Anchored, since a layout of Qt 6.4 inside another one
// can keep its old widths when the text size changes.
Item {
    id: line

    required property string path
    required property bool isKept

    implicitHeight: Math.max(chip.implicitHeight, name.implicitHeight)

    Chip {
        id: chip

        text: line.isKept ? qsTr("Kept") : qsTr("Extra copy")
        symbol: line.isKept ? "checkmark" : "doc.on.doc"
        color: line.isKept ? Theme.safe : Theme.secondaryText
        anchors.verticalCenter: parent.verticalCenter
        Accessible.ignored: true
    }
    PathText {
        id: name

        path: line.path
        anchors.left: parent.left
        anchors.leftMargin: Math.max(chip.implicitWidth, Theme.scaled(92)) + Theme.tight
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        Accessible.ignored: true
    }
}
