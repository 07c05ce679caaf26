import QtQuick
import QtQuick.Layouts
import Brimlo

// One item of a plan, or the many of one folder, and what becomes of it. A click on an item toggles
// it, one on a folder unfolds it.
ListRow {
    id: row

    required property string title
    required property string subtitle
    required property string reason
    required property real size
    required property string fate
    required property string tick
    required property int itemCount
    required property bool expanded
    required property bool isInFolder

    // Whether items can be unticked.
    property bool tickable: true

    // The width of the widest chip in the list, so that sizes are in one column.
    property real fateWidth: 0

    readonly property bool stays: fate === "stays"
    readonly property string place: itemCount > 0 ? qsTr("%1 · %2 items").arg(subtitle).arg(Format.count(itemCount)) : subtitle

    signal ticked

    text: title + (place !== "" ? ", " + place : "") + (reason !== "" ? ", " + reason : "") + ", " + Format.bytes(size) + ", " + chip.text
    leftPadding: isInFolder ? Theme.huge : Theme.snug
    topPadding: 5
    bottomPadding: 5
    spacing: Theme.tight
    Accessible.checkable: tickable && !stays
    Accessible.checked: tick === "all"
    Accessible.checkStateMixed: tick === "some"

    CheckBox {
        checkState: row.tick === "all" ? Qt.Checked : row.tick === "some" ? Qt.PartiallyChecked : Qt.Unchecked
        label: row.title + (row.place !== "" ? ", " + row.place : "")
        visible: row.tickable
        enabled: !row.stays
        focusPolicy: Qt.NoFocus
        onClicked: row.ticked()
    }
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
        Label {
            text: row.reason
            color: Theme.reviewText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.small
            visible: row.reason !== ""
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
        implicitWidth: Math.max(chip.implicitWidth, row.fateWidth)
        implicitHeight: chip.implicitHeight

        Chip {
            id: chip

            anchors.right: parent.right
            text: row.stays ? qsTr("Stays") : row.fate === "forGood" ? qsTr("Docker · permanent") : qsTr("Trash")
            symbol: row.stays ? "lock" : row.fate === "forGood" ? "shippingbox" : "trash"
            color: row.stays ? Theme.secondaryText : row.fate === "forGood" ? Theme.review : Theme.info
            help: row.fate === "forGood" ? qsTr("Docker objects are removed through Docker and cannot be restored. What was never pushed or cannot be built again is lost.") : ""
        }
    }
}
