import QtQuick
import QtQuick.Layouts
import Brimlo

// A row of a group's card: its header or one of its files.
ListRow {
    id: row

    required property int index
    required property string kind
    required property real copies
    required property real size
    required property real wasted
    required property real share
    required property string cloneRefusal
    required property string path
    required property bool isKept
    required property string reason
    required property bool isLast

    readonly property bool isGroup: kind === "group"
    readonly property int gap: isLast ? Theme.snug : 0

    signal cloned
    signal trashed
    signal kept

    function words(): string {
        if (isGroup)
            return qsTr("%1 copies %2 each, wastes %3").arg(Format.count(copies)).arg(Format.bytes(size)).arg(Format.bytes(wasted));
        return (isKept ? qsTr("Kept") : qsTr("Extra copy")) + ", " + path;
    }

    text: words()
    Accessible.description: isGroup ? cloneRefusal : reason
    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    z: isGroup || isLast ? 0 : 1
    leftPadding: Theme.normal
    rightPadding: Theme.snug
    topPadding: isGroup ? Theme.tight + 2 : 1
    bottomPadding: isGroup ? Theme.tight - 1 : isLast ? Theme.tight + gap : 1
    implicitHeight: Math.max(isGroup ? Theme.controlHeight : Theme.rowHeight - 4, implicitContentHeight) + topPadding + bottomPadding

    background: Item {
        CardSlice {
            isHead: row.isGroup
            isFoot: row.isLast
            anchors.fill: parent
            anchors.bottomMargin: row.gap
        }
        HoverHighlight {
            anchors.fill: undefined
            x: Theme.tight
            y: row.topPadding - 1
            width: row.width - 2 * x
            height: row.height - row.topPadding - row.bottomPadding + 2
            visible: !row.isGroup
        }
        FocusRing {
            anchors.margins: row.isGroup ? 5 : 0
            anchors.leftMargin: 5
            anchors.rightMargin: 5
            anchors.bottomMargin: row.isGroup ? 2 : row.isLast ? 5 + row.gap : 0
            radius: Theme.radius
            shown: row.ringed
        }
    }

    DuplicateHead {
        copies: row.copies
        size: row.size
        wasted: row.wasted
        share: row.share
        cloneRefusal: row.cloneRefusal
        isCurrent: row.ListView.isCurrentItem
        visible: row.isGroup
        onCloned: row.cloned()
        onTrashed: row.trashed()
        Layout.fillWidth: true
    }
    DuplicatePath {
        path: row.path
        isKept: row.isKept
        reason: row.reason
        visible: !row.isGroup
        onKept: row.kept()
        Layout.fillWidth: true
    }

    // One file of a group, and whether and why it is kept. A press on the mark keeps it. Uses
    // anchors, because a nested layout of Qt 6.4 can keep its old widths when the text size changes.
    component DuplicatePath: Item {
        id: line

        required property string path
        required property bool isKept
        required property string reason

        signal kept

        implicitHeight: Math.max(chip.implicitHeight, name.implicitHeight)

        Chip {
            id: chip

            text: line.isKept ? qsTr("Kept") : qsTr("Extra copy")
            symbol: line.isKept ? "checkmark" : "doc.on.doc"
            color: line.isKept ? Theme.safe : Theme.secondaryText
            help: line.isKept ? "" : qsTr("Keep this copy (Space)")
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true

            TapHandler {
                onTapped: line.kept()
            }
        }
        PathText {
            id: name

            path: line.path
            anchors.left: parent.left
            anchors.leftMargin: Math.max(chip.implicitWidth, Theme.scaled(92)) + Theme.tight
            anchors.right: why.left
            anchors.rightMargin: Theme.tight
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true
        }
        Label {
            id: why

            text: line.reason
            secondary: true
            font.pixelSize: Theme.small
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true
        }
    }

    // A part of a card that spans several rows of a list: its head, its foot, or a part between.
    // Head and foot extend below the neighbouring part, which hides their inner corners and
    // therefore must be stacked above them.
    component CardSlice: Item {
        id: slice

        property bool isHead: false
        property bool isFoot: false
        readonly property bool isRound: isHead || isFoot

        Rectangle {
            anchors.fill: parent
            anchors.topMargin: slice.isFoot ? -radius : 0
            anchors.bottomMargin: slice.isHead ? -radius : 0
            radius: slice.isRound ? Theme.radiusLarge : 0
            color: Theme.card
            border.width: slice.isRound ? 1 : 0
            border.color: Theme.border
        }
        Rectangle {
            width: 1
            height: parent.height
            color: Theme.border
            visible: !slice.isRound
        }
        Rectangle {
            width: 1
            height: parent.height
            anchors.right: parent.right
            color: Theme.border
            visible: !slice.isRound
        }
    }
}
