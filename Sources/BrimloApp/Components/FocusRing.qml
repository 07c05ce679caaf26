import QtQuick

// Shows what the keyboard acts on; the mouse never makes it appear.
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
