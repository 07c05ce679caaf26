import QtQuick
import QtQuick.Layouts
import Brimlo

// One file of a group, and whether it stays.
RowLayout {
    id: line

    required property string path
    required property bool isKept

    spacing: Theme.tight

    Item {
        implicitWidth: Math.max(chip.implicitWidth, Theme.scaled(92))
        implicitHeight: chip.implicitHeight

        Chip {
            id: chip

            text: line.isKept ? qsTr("Kept") : qsTr("Extra copy")
            symbol: line.isKept ? "checkmark" : "doc.on.doc"
            color: line.isKept ? Theme.safe : Theme.secondaryText
            Accessible.ignored: true
        }
    }
    PathText {
        path: line.path
        Layout.fillWidth: true
        Accessible.ignored: true
    }
}
