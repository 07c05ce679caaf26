import QtQuick

// Highlights a row under the pointer. Must be the row's first child.
Rectangle {
    readonly property alias hovered: pointer.hovered
    property bool selected: false

    anchors.fill: parent
    radius: Theme.radius
    color: selected ? Theme.selection : pointer.hovered ? Theme.subtle : Theme.faded(Theme.text, 0)
    Accessible.ignored: true

    Behavior on color {
        ColorAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
    HoverHandler {
        id: pointer

        enabled: parent.enabled
    }
}
