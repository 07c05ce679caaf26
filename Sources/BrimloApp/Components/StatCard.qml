import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// One figure and what it counts.
T.Pane {
    id: stat

    property string value
    property string label
    property color color: Theme.text

    implicitWidth: column.implicitWidth + leftPadding + rightPadding
    implicitHeight: column.implicitHeight + topPadding + bottomPadding
    padding: Theme.snug
    leftPadding: Theme.normal
    Layout.fillWidth: true
    Layout.preferredWidth: 1
    Layout.minimumWidth: implicitWidth
    Accessible.role: Accessible.StaticText
    Accessible.name: value + " " + label

    contentItem: ColumnLayout {
        id: column

        spacing: 1

        Label {
            text: stat.value
            color: Theme.legible(stat.color, Theme.mixed(Theme.dark ? Theme.popup : Theme.card, stat.color, 0.1))
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Label {
            text: stat.label
            secondary: true
            font.pixelSize: Theme.small
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    background: Rectangle {
        radius: Theme.radius + 2
        color: Theme.faded(stat.color, 0.1)
    }
}
