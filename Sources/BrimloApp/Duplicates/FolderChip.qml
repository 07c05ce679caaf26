import QtQuick
import Brimlo

// A folder that counts for something until the chip is pressed.
ButtonBase {
    id: chip

    property string folder
    readonly property string name: Format.oneLine(Places.name(folder))

    symbol: "xmark"
    symbolSize: 12

    background: Rectangle {
        radius: height / 2
        color: chip.hovered ? Theme.subtle : Theme.selection
        border.width: 1
        border.color: Theme.border

        FocusRing {
            anchors.margins: -2
            radius: parent.radius + 2
            shown: chip.visualFocus
        }
    }
}
