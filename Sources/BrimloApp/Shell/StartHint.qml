import QtQuick
import QtQuick.Layouts
import Brimlo

// A hint at the bottom of a start panel, centred.
Item {
    id: hint

    property string symbol
    property string text
    readonly property int lead: symbol === "" ? 0 : icon.width + line.spacing

    implicitWidth: lead + words.implicitWidth
    implicitHeight: words.height
    Layout.fillWidth: true

    Row {
        id: line

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 7

        Icon {
            id: icon

            symbol: hint.symbol
            visible: symbol !== ""
            size: 15
            color: Theme.secondaryText
        }
        Label {
            id: words

            text: hint.text
            secondary: true
            font.pixelSize: Theme.small
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            width: Math.min(implicitWidth, hint.width - hint.lead)
        }
    }
}
