import QtQuick
import QtQuick.Layouts
import Brimlo

// One item of a plan, or the many of one folder, and its destination.
ListRow {
    id: row

    required property string title
    required property string subtitle
    required property real size
    required property bool isDocker
    required property int itemCount
    required property bool expanded
    required property bool isInFolder

    readonly property string place: itemCount > 0 ? qsTr("%1 · %2 items").arg(subtitle).arg(Format.count(itemCount)) : subtitle

    text: title + ", " + (place !== "" ? place + ", " : "") + Format.bytes(size) + ", " + chip.text
    leftPadding: isInFolder ? Theme.huge : Theme.snug
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
            path: row.place
            secondary: true
            font.pixelSize: Theme.small
            visible: row.place !== ""
            Layout.fillWidth: true
        }
    }
    PlainButton {
        symbol: row.expanded ? "chevron.down" : "chevron.right"
        help: row.expanded ? qsTr("Hide the items") : qsTr("Show the items")
        ink: Theme.secondaryText
        visible: row.itemCount > 0
        focusPolicy: Qt.NoFocus
        onClicked: row.clicked()
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
