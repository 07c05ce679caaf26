import QtQuick
import QtQuick.Layouts

// A figure and its label.
Item {
    id: stat

    property string value
    property string label
    property color color: Theme.text

    implicitWidth: column.implicitWidth + Theme.normal + Theme.snug
    implicitHeight: column.implicitHeight + 2 * Theme.snug
    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.minimumHeight: implicitHeight
    Layout.preferredWidth: 1
    Layout.minimumWidth: 100
    Accessible.role: Accessible.StaticText
    Accessible.name: value + " " + label

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius + 2
        color: Theme.faded(stat.color, 0.1)
    }
    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Theme.snug
        anchors.leftMargin: Theme.normal
        spacing: 1

        Label {
            text: stat.value
            color: Theme.legible(stat.color, Theme.mixed(Theme.dark ? Theme.popup : Theme.card, stat.color, 0.1))
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.body
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Label {
            text: stat.label
            secondary: true
            font.pixelSize: Theme.small
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
}
