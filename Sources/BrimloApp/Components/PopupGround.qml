pragma ComponentBehavior: Bound

import QtQuick

// The background of menus, popovers and sheets, with a shadow that needs no shader.
Item {
    id: ground

    property color color: Theme.popup
    property int radius: Theme.radiusLarge
    property int depth: 10

    Repeater {
        model: ground.depth

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -index
            anchors.topMargin: -index + ground.depth / 3
            anchors.bottomMargin: -index - ground.depth / 3
            radius: ground.radius + index
            color: Qt.rgba(0, 0, 0, (Theme.dark ? 0.28 : 0.11) / ground.depth)
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: ground.radius
        color: ground.color
        border.width: 1
        border.color: Theme.border
    }
}
