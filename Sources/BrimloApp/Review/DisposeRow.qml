import QtQuick
import QtQuick.Layouts
import Brimlo

// One item of a plan and its destination.
ListRow {
    id: row

    required property string title
    required property string subtitle
    required property real size
    required property bool isDocker

    text: title + ", " + (subtitle !== "" ? subtitle + ", " : "") + Format.bytes(size) + ", " + chip.text
    topPadding: 5
    bottomPadding: 5

    ColumnLayout {
        spacing: 1
        Layout.fillWidth: true

        PathText {
            path: row.title
            font.weight: row.subtitle !== "" ? Font.Medium : Font.Normal
            Layout.fillWidth: true
        }
        PathText {
            path: row.subtitle
            secondary: true
            font.pixelSize: Theme.small
            visible: row.subtitle !== ""
            Layout.fillWidth: true
        }
    }
    SizeText {
        bytes: row.size
    }
    Item {
        implicitWidth: Math.max(chip.implicitWidth, Theme.scaled(68))
        implicitHeight: chip.implicitHeight

        Chip {
            id: chip

            anchors.right: parent.right
            text: row.isDocker ? qsTr("Docker · permanent") : qsTr("Trash")
            symbol: row.isDocker ? "shippingbox" : "trash"
            color: row.isDocker ? Theme.review : Theme.info
            help: row.isDocker ? qsTr("Docker objects are removed through Docker and cannot be restored. What was never pushed or cannot be built again is lost.") : ""
        }
    }
}
