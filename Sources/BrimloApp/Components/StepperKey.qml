import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// One half of a stepper; held down it goes on. The keyboard acts on the stepper as a whole.
T.AbstractButton {
    id: key

    property string symbol
    property string label

    implicitWidth: 30
    Layout.fillHeight: true
    focusPolicy: Qt.NoFocus
    autoRepeat: true
    hoverEnabled: true
    opacity: enabled ? 1 : 0.4
    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: if (key.enabled)
        key.clicked()

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: key.symbol
            size: 13
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        radius: Theme.radius - 2
        color: key.down ? Theme.faded(Theme.text, 0.12) : key.hovered && key.enabled ? Theme.subtle : "transparent"
    }
}
