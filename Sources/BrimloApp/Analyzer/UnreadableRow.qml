import QtQuick
import QtQuick.Layouts
import Brimlo

// An area of the disk with unreadable folders.
RowLayout {
    id: row

    required property string area
    required property real areaCount
    required property string reason

    spacing: Theme.snug
    Accessible.role: Accessible.StaticText
    Accessible.name: area + ", " + Format.count(areaCount) + ", " + reason

    ColumnLayout {
        spacing: 1
        Layout.fillWidth: true

        PathText {
            path: row.area
            font.weight: Font.Medium
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Label {
            text: row.reason
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    Label {
        text: Format.count(row.areaCount)
        secondary: true
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true
    }
}
