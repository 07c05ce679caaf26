import QtQuick
import Brimlo

// The round mark of one choice among several.
Rectangle {
    property bool on: false
    property color ink: Theme.accentText

    implicitWidth: 16
    implicitHeight: 16
    radius: 8
    color: "transparent"
    border.width: on ? 5 : 1.5
    border.color: on ? ink : Theme.secondaryText
}
