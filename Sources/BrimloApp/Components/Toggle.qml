import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A switch that shows `on` and emits `switched` with the other state; its owner changes it.
T.CheckBox {
    id: toggle

    property bool on: false
    property string help
    property string label: text !== "" ? text : help

    signal switched(bool value)

    function press() {
        if (enabled)
            clicked();
    }

    checkState: on ? Qt.Checked : Qt.Unchecked
    nextCheckState: () => checkState
    implicitWidth: line.implicitWidth
    implicitHeight: Math.max(24, line.implicitHeight)
    hoverEnabled: true
    onClicked: switched(!on)
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()
    Accessible.name: label
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()

    contentItem: RowLayout {
        id: line

        spacing: Theme.snug

        Label {
            text: toggle.text
            visible: text !== ""
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Rectangle {
            implicitWidth: Theme.scaled(36)
            implicitHeight: Theme.scaled(20)
            radius: height / 2
            opacity: toggle.enabled ? 1 : 0.45
            color: toggle.on ? Theme.accent : Theme.faded(Theme.text, 0.16)
            border.width: toggle.on ? 0 : 1
            border.color: Theme.fieldBorder

            Behavior on color {
                ColorAnimation {
                    duration: Theme.quick
                }
            }
            Rectangle {
                x: toggle.on ? parent.width - width - 2 : 2
                y: 2
                width: parent.height - 4
                height: width
                radius: width / 2
                color: toggle.on ? Theme.inkOnAccent : "#ffffff"
                border.width: toggle.on ? 0 : 1
                border.color: Theme.fieldBorder

                Behavior on x {
                    NumberAnimation {
                        duration: Theme.quick
                        easing.type: Easing.OutQuad
                    }
                }
            }
            FocusRing {
                radius: parent.radius + 3
                shown: toggle.visualFocus
            }
        }
    }
    HelpTip {
        text: toggle.help
        shown: toggle.hovered || toggle.visualFocus
    }
}
