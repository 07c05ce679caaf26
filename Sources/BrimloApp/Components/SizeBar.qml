import QtQuick
import Brimlo

// A share of a whole as a bar and in percent, for a column of rows.
Item {
    id: bar

    property real share: 0

    readonly property string text: Format.percent(share)

    implicitWidth: Theme.scaled(64) + Math.ceil(widest.advanceWidth) + Theme.tight
    implicitHeight: percent.implicitHeight

    TextMetrics {
        id: widest

        font: percent.font
        text: Format.percent(1)
    }
    Rectangle {
        width: Theme.scaled(64)
        height: 4
        radius: 2
        color: Theme.subtle
        anchors.verticalCenter: parent.verticalCenter

        Rectangle {
            width: Math.max(parent.height, parent.width * bar.share)
            height: parent.height
            radius: 2
            color: Theme.info
            visible: bar.share > 0
        }
    }
    Label {
        id: percent

        text: bar.text
        secondary: true
        font.pixelSize: Theme.small
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        Accessible.ignored: true
    }
}
