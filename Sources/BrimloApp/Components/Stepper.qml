import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A number changed in steps. Shows `value` even outside the range, from where the steps only lead
// back, and emits `stepped`; its owner changes the value.
FocusScope {
    id: stepper

    property int value: 0
    property int from: 0
    property int to: 100
    property int step: 1
    property string text
    property string label: text !== "" ? text : String(value)

    signal stepped(int value)

    function move(by) {
        const next = by > 0 ? Math.max(value, Math.min(to, value + by)) : Math.min(value, Math.max(from, value + by));
        if (next !== value)
            stepped(next);
    }

    implicitWidth: line.implicitWidth
    implicitHeight: Math.max(Theme.controlHeight, line.implicitHeight)
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.45
    Keys.onUpPressed: move(step)
    Keys.onRightPressed: move(step)
    Keys.onDownPressed: move(-step)
    Keys.onLeftPressed: move(-step)
    Accessible.role: Accessible.SpinBox
    Accessible.name: label
    Accessible.focusable: true
    Accessible.onIncreaseAction: move(step)
    Accessible.onDecreaseAction: move(-step)

    RowLayout {
        id: line

        anchors.fill: parent
        spacing: Theme.snug

        Label {
            text: stepper.text
            visible: text !== ""
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        Rectangle {
            implicitWidth: keys.implicitWidth
            implicitHeight: Theme.controlHeight - 4
            radius: Theme.radius
            color: Theme.card
            border.width: 1
            border.color: Theme.fieldBorder

            RowLayout {
                id: keys

                anchors.fill: parent
                spacing: 0

                StepperKey {
                    symbol: "minus"
                    label: qsTr("Decrease")
                    enabled: stepper.value > stepper.from
                    onClicked: stepper.move(-stepper.step)
                }
                Divider {
                    vertical: true
                    implicitHeight: 14
                }
                StepperKey {
                    symbol: "plus"
                    label: qsTr("Increase")
                    enabled: stepper.value < stepper.to
                    onClicked: stepper.move(stepper.step)
                }
            }
            FocusRing {
                shown: stepper.activeFocus
            }
        }
    }

    // One button of a stepper; it repeats while held. The keyboard acts on the stepper as a whole.
    component StepperKey: T.AbstractButton {
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
}
