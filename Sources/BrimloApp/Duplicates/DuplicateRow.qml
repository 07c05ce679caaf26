import QtQuick
import QtQuick.Layouts
import Brimlo

// A line of a group's card: its head, or one of its files.
ListRow {
    id: row

    required property int index
    required property string kind
    required property real copies
    required property real size
    required property real wasted
    required property string path
    required property bool isKept
    required property bool isLast

    readonly property bool isGroup: kind === "group"
    readonly property int gap: isLast ? Theme.snug : 0

    signal cloned
    signal trashed

    function words(): string {
        if (isGroup)
            return qsTr("%1 copies %2 each, wastes %3").arg(Format.count(copies)).arg(Format.bytes(size)).arg(Format.bytes(wasted));
        return (isKept ? qsTr("Kept") : qsTr("Extra copy")) + ", " + path;
    }

    text: words()
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
        isCurrent: row.ListView.isCurrentItem
        visible: row.isGroup
        onCloned: row.cloned()
        onTrashed: row.trashed()
        Layout.fillWidth: true
    }
    DuplicatePath {
        path: row.path
        isKept: row.isKept
        visible: !row.isGroup
        Layout.fillWidth: true
    }
}
