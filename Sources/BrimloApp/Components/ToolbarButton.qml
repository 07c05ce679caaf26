import QtQuick

// A toolbar button: a symbol, and a text if there is room; `help` names it.
ButtonBase {
    id: button

    symbolSize: 16
    leftPadding: text !== "" || hasMenu ? 10 : 7
    rightPadding: leftPadding
    background: Rectangle {
        radius: Theme.radius
        color: button.checked ? Theme.selection : button.hovered && button.enabled ? Theme.subtle : "transparent"

        FocusRing {
            anchors.margins: -1
            radius: Theme.radius + 1
            shown: button.visualFocus
        }
    }
}
