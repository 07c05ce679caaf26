import QtQuick

// The ring around the control with keyboard focus; never visible after a mouse click.
Rectangle {
    property bool shown: false

    visible: shown
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.radius + 3
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
    Accessible.ignored: true
}
