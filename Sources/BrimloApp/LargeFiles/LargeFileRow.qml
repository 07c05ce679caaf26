import QtQuick
import QtQuick.Layouts
import Brimlo

// One of the largest files.
ListRow {
    id: row

    required property int index
    required property string name
    required property string path
    required property real size
    required property date modified
    required property real share
    required property string frees
    required selected

    property int dateWidth: 100
    readonly property bool isWide: width > Theme.scaled(900)
    readonly property bool isByDate: AppModel.largeFiles.rows.order.key === "Modified"

    signal picked(int modifiers)
    signal revealed
    signal trashed

    text: name + ", " + path + ", " + Format.bytes(size) + (frees === "" ? "" : ", " + frees) + ", " + Format.percent(share) + ", " + Format.date(modified)
    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    topPadding: 7
    bottomPadding: 7

    PointHandler {
        acceptedButtons: Qt.LeftButton
        onActiveChanged: if (active)
            row.picked(point.modifiers)
    }
    Icon {
        symbol: "doc.fill"
        color: Theme.secondaryText
    }
    ColumnLayout {
        spacing: 1
        Layout.fillWidth: true

        PathText {
            path: row.name
            font.weight: Font.Medium
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        PathText {
            path: row.path
            secondary: true
            font.pixelSize: Theme.small
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    Label {
        text: row.frees
        secondary: true
        visible: text !== ""
        Accessible.ignored: true
    }
    SizeBar {
        share: row.share
        visible: row.width > Theme.scaled(620) && (row.isWide || !row.isByDate)
    }
    Label {
        text: Format.date(row.modified)
        secondary: true
        visible: row.isWide || row.isByDate
        Layout.preferredWidth: row.dateWidth
        Accessible.ignored: true
    }
    SizeText {
        bytes: row.size
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
    RowButton {
        text: qsTr("Reveal")
        help: qsTr("Reveal in %1").arg(Desktop.fileManager)
        isCurrent: row.ListView.isCurrentItem
        Layout.leftMargin: Theme.tight
        onClicked: row.revealed()
    }
    RowButton {
        text: qsTr("Move to Trash")
        symbol: "trash"
        enabled: !AppModel.cleanup.isCleaning
        isCurrent: row.ListView.isCurrentItem
        onClicked: row.trashed()
    }
}
