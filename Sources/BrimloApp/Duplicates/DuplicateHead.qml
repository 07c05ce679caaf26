import QtQuick
import QtQuick.Layouts
import Brimlo

// The header of a group of equal files: their sizes, and the two ways to reclaim space.
LineEnds {
    id: head

    required property real copies
    required property real size
    required property real wasted
    required property real share
    required property string cloneRefusal
    required property bool isCurrent

    signal cloned
    signal trashed

    // Wraps.
    start: Flow {
        id: words

        spacing: Theme.tight
        Layout.fillWidth: true
        Layout.preferredWidth: copies.implicitWidth + each.implicitWidth + waste.implicitWidth + 2 * spacing
        Layout.rightMargin: Theme.tight

        Label {
            id: copies

            text: qsTr("%1 copies").arg(Format.count(head.copies))
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Label {
            id: each

            text: qsTr("%1 each").arg(Format.bytes(head.size))
            secondary: true
            Accessible.ignored: true
        }
        Label {
            id: waste

            readonly property real room: words.width - copies.width - each.width - 2 * words.spacing

            text: qsTr("wastes %1").arg(Format.bytes(head.wasted))
            color: Theme.rebuildText
            font.weight: Font.Medium
            horizontalAlignment: Text.AlignRight
            width: room < implicitWidth ? implicitWidth : room
            Accessible.ignored: true
        }
    }
    end: [
        SizeBar {
            share: head.share
            visible: head.width > Theme.scaled(820)
            Layout.rightMargin: Theme.tight
        },
        RowButton {
            id: cloneButton

            text: qsTr("Replace with clones")
            symbol: "doc.on.doc"
            enabled: AppModel.busy === "" && head.cloneRefusal === "" && head.wasted > 0
            isCurrent: head.isCurrent
            onClicked: head.cloned()
        },
        RowButton {
            text: qsTr("Trash extras")
            symbol: "trash"
            enabled: !AppModel.cleanup.isCleaning && head.wasted > 0
            isCurrent: head.isCurrent
            onClicked: head.trashed()
        }
    ]

    // A disabled button doesn't know of the pointer.
    HoverHandler {
        id: pointer
    }
    HelpTip {
        parent: cloneButton
        text: head.cloneRefusal
        shown: pointer.hovered && cloneButton.contains(cloneButton.mapFromItem(head, pointer.point.position))
    }
}
