import QtQuick

// A button without a frame: for crumbs, links and rows.
ButtonBase {
    id: button

    leftPadding: text !== "" ? 7 : 4
    rightPadding: leftPadding
    implicitWidth: Math.max(26, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(26, Theme.body + 13)
    font.weight: Font.Normal
    background: Rectangle {
        radius: 6
        color: button.hovered && button.enabled || button.checked ? Theme.subtle : "transparent"

        FocusRing {
            anchors.margins: -2
            radius: 8
            shown: button.visualFocus
        }
    }
}
