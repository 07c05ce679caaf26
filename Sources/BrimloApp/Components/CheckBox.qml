import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A check box that shows `checkState`. The owner of the state changes it on `clicked`.
T.CheckBox {
    id: box

    property string help

    // The name for screen readers if the box has no text.
    property string label: text !== "" ? text : help

    function press() {
        if (enabled)
            clicked();
    }

    tristate: true
    nextCheckState: () => checkState
    implicitWidth: Math.max(26, line.implicitWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(26, line.implicitHeight)
    leftPadding: text !== "" ? 0 : 4
    rightPadding: leftPadding
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()
    Accessible.name: label
    Accessible.onPressAction: press()
    Accessible.onToggleAction: press()

    contentItem: RowLayout {
        id: line

        spacing: 7

        Icon {
            symbol: ["square", "minus.square.fill", "checkmark.square.fill"][box.checkState]
            size: 18
            weight: 1.75
            color: box.checkState === Qt.Unchecked ? (box.hovered ? Theme.text : Theme.secondaryText) : Theme.accentText

            FocusRing {
                anchors.margins: -2
                radius: 6
                shown: box.visualFocus
            }
        }
        Label {
            text: box.text
            visible: text !== ""
            wrapMode: Text.Wrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    HelpTip {
        text: box.help
        shown: box.hovered || box.visualFocus
    }
}
