import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// The base of all buttons: symbol and text, keys, tooltip, pressed look.
T.Button {
    id: button

    property string symbol
    property string help
    property color ink: Theme.text
    property int symbolSize: 15
    property bool hasMenu: false

    function press() {
        if (enabled)
            clicked();
    }

    implicitWidth: Math.max(Theme.controlHeight, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    leftPadding: 13
    rightPadding: 13
    font.family: Theme.family
    font.pixelSize: Theme.body
    font.weight: Font.Medium
    hoverEnabled: true
    opacity: !enabled ? 0.45 : down ? 0.7 : 1
    scale: down && !Theme.reduceMotion ? 0.97 : 1
    Accessible.name: text !== "" ? text : help
    Accessible.description: text !== "" ? help : ""
    Accessible.onPressAction: press()
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()

    contentItem: Item {
        implicitWidth: line.implicitWidth
        implicitHeight: line.implicitHeight

        RowLayout {
            id: line

            anchors.centerIn: parent
            width: Math.min(parent.width, implicitWidth)
            spacing: 7

            Icon {
                symbol: button.symbol
                visible: button.symbol !== ""
                size: button.symbolSize
                color: button.ink
            }
            Label {
                text: button.text
                visible: text !== ""
                font: button.font
                color: button.ink
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Icon {
                symbol: "chevron.down"
                visible: button.hasMenu
                size: 12
                color: button.ink
            }
        }
    }

    Behavior on scale {
        NumberAnimation {
            duration: Theme.quick
            easing.type: Easing.OutQuad
        }
    }
    HelpTip {
        text: button.help
        shown: (button.hovered || button.visualFocus) && !button.checked
    }
}
