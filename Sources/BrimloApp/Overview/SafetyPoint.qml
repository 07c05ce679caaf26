import QtQuick
import QtQuick.Layouts
import Brimlo

RowLayout {
    id: point

    property string symbol
    property color color
    property string title
    property string line

    spacing: Theme.snug
    Layout.fillWidth: true
    Layout.preferredWidth: 1
    Layout.alignment: Qt.AlignTop

    Rectangle {
        implicitWidth: Theme.scaled(32)
        implicitHeight: implicitWidth
        radius: Theme.radius
        color: Theme.faded(point.color, 0.14)
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true

        Icon {
            anchors.centerIn: parent
            symbol: point.symbol
            color: Theme.legible(point.color, Theme.mixed(Theme.card, point.color, 0.14))
        }
    }
    ColumnLayout {
        spacing: 2
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop

        Label {
            text: point.title
            font.weight: Font.DemiBold
            Layout.fillWidth: true
        }
        Label {
            text: point.line
            secondary: true
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Layout.fillWidth: true
        }
    }
}
