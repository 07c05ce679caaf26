import QtQuick
import QtQuick.Layouts
import Brimlo

// A cleanup, or one item of it.
ListRow {
    id: row

    required property int index
    required property string kind
    required property string title
    required property date date
    required property string summary
    required property int otherCount
    required property bool restorable
    required property double size
    required property bool expanded
    required property string path
    required property var model  // `state` would clash with a property of Item.

    readonly property bool isBatch: kind === "batch"
    readonly property bool isNarrow: width < Theme.scaled(520)
    readonly property string paths: otherCount > 0 ? qsTr("%1 and %2 more").arg(summary).arg(Format.count(otherCount)) : summary
    readonly property string undoText: isBatch ? qsTr("Undo all") : qsTr("Undo")
    readonly property string when: Format.dateTime(date)

    signal toggled
    signal undone

    function expand(wanted) {
        if (isBatch && expanded !== wanted)
            toggled();
    }

    implicitHeight: isBatch ? Math.max(56, words.implicitHeight + 18) : Math.max(Theme.rowHeight, words.implicitHeight + 4)
    text: isBatch ? qsTr("%1, %2, %3, %4").arg(title).arg(when).arg(paths).arg(Format.bytes(size)) : qsTr("%1, %2, %3").arg(path).arg(chip.text).arg(Format.bytes(size))
    onClicked: toggled()

    Icon {
        symbol: row.expanded ? "chevron.down" : "chevron.right"
        size: 14
        opacity: row.isBatch ? 1 : 0
        color: Theme.secondaryText
    }
    GridLayout {
        id: words

        columns: row.isNarrow ? 1 : 2
        columnSpacing: row.spacing
        rowSpacing: 2
        Layout.fillWidth: true

        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true

            PathText {
                path: row.isBatch ? row.title : row.path
                font.weight: row.isBatch ? Font.DemiBold : Font.Normal
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            PathText {
                path: row.paths
                secondary: true
                font.pixelSize: Theme.small
                visible: row.isBatch
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
        Label {
            text: row.when
            secondary: true
            visible: row.isBatch
            Accessible.ignored: true
        }
        HistoryStateChip {
            id: chip

            entryState: row.model.state
            visible: !row.isBatch
            Accessible.ignored: true
        }
    }
    SizeText {
        bytes: row.size
        secondary: !row.isBatch
        Accessible.ignored: true
    }
    Item {
        implicitWidth: row.isNarrow ? undo.implicitWidth : Math.max(undo.implicitWidth, Theme.scaled(104))
        implicitHeight: undo.implicitHeight

        OutlineButton {
            id: undo

            anchors.right: parent.right
            text: row.isNarrow ? "" : row.undoText
            help: row.isNarrow ? row.undoText : ""
            symbol: "arrow.uturn.backward"
            visible: row.restorable
            enabled: AppModel.busy === ""
            focusPolicy: row.ListView.isCurrentItem || activeFocus ? Qt.StrongFocus : Qt.NoFocus
            implicitHeight: Theme.controlHeight - 2
            onClicked: row.undone()
        }
    }

    // The state of an item: "restored", "gone", "inTrash" or "removed".
    component HistoryStateChip: Chip {
        property string entryState
        readonly property var looks: ({
                restored: {
                    text: qsTr("Restored"),
                    symbol: "arrow.uturn.backward",
                    color: Theme.safe
                },
                gone: {
                    text: qsTr("Gone"),
                    symbol: "xmark.bin",
                    color: Theme.secondaryText
                },
                inTrash: {
                    text: qsTr("In Trash · can Put Back"),
                    symbol: "trash",
                    color: Theme.info
                },
                removed: {
                    text: qsTr("Removed for good"),
                    symbol: "xmark.bin",
                    color: Theme.review
                }
            })
        readonly property var look: looks[entryState] ?? null

        text: look?.text ?? ""
        symbol: look?.symbol ?? ""
        color: look?.color ?? Theme.secondaryText
    }
}
