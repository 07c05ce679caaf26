import QtQuick
import QtQuick.Templates as T

// A thin handle, visible only if there is something to scroll.
T.ScrollBar {
    id: bar

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.06
    policy: T.ScrollBar.AsNeeded
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.faded(Theme.text, bar.pressed ? 0.5 : bar.hovered ? 0.4 : 0.22)
    }
}
