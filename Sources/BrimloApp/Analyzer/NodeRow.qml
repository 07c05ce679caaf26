import QtQuick
import QtQuick.Layouts
import Brimlo

// An entry of the current folder. A click selects it, with Control toggles it, with Shift selects a
// range; a double click opens it.
ListRow {
    id: row

    required property int index
    required property string name
    required property string path
    required property real size
    required property real share
    required property real fileCount
    required property date modified
    required property bool isDirectory
    required property bool isAggregate
    required property int kindIndex
    required property string growth
    required selected

    property int countWidth: 80
    property int dateWidth: 100
    property int growthWidth: 0
    readonly property string countText: Format.count(fileCount)
    readonly property string dateText: isAggregate ? "" : Format.date(modified)

    signal picked(int modifiers)
    signal menuWanted(point at)

    text: name + ", " + qsTr("%1 files").arg(countText) + ", " + Format.bytes(size) + ", " + Format.percent(share) + (growth !== "" ? ", " + qsTr("%1 since an earlier scan").arg(growth) : "") + (dateText !== "" ? ", " + dateText : "")
    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    Accessible.onPressAction: picked(Qt.NoModifier)

    // No tap handlers: they look up their window on release, when the row of an opened folder no
    // longer has one.
    PointHandler {
        acceptedButtons: Qt.LeftButton
        onActiveChanged: if (active)
            row.picked(point.modifiers)
    }
    PointHandler {
        acceptedButtons: Qt.RightButton
        onActiveChanged: if (active)
            row.menuWanted(point.position)
    }
    Icon {
        symbol: row.isAggregate ? "ellipsis" : row.isDirectory ? "folder.fill" : "doc.fill"
        color: FileKinds.color(row.kindIndex)
    }
    PathText {
        path: row.name
        Layout.fillWidth: true
        Accessible.ignored: true
    }
    SizeBar {
        share: row.share
        visible: row.width > Theme.scaled(520)
    }
    Label {
        text: row.growth
        color: row.growth.startsWith("+") ? Theme.rebuildText : Theme.safeText
        horizontalAlignment: Text.AlignRight
        visible: row.growthWidth > 0
        Layout.preferredWidth: row.growthWidth
        Accessible.ignored: true
    }
    Label {
        text: row.countText
        secondary: true
        horizontalAlignment: Text.AlignRight
        Layout.preferredWidth: row.countWidth
        Accessible.ignored: true
    }
    SizeText {
        bytes: row.size
        Accessible.ignored: true
        Layout.preferredWidth: Math.max(row.countWidth, implicitWidth)
    }
    Label {
        text: row.dateText
        secondary: true
        Layout.preferredWidth: row.dateWidth
        Layout.leftMargin: Theme.tight
        Accessible.ignored: true
    }
}
