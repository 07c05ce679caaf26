import QtQuick
import QtQuick.Templates as T

// A text field of one line.
T.TextField {
    id: field

    property string placeholder
    property string label: placeholder
    property bool invalid: false

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    font.family: Theme.family
    font.pixelSize: Theme.body
    color: enabled ? Theme.text : Theme.disabledText
    selectByMouse: true
    selectionColor: Theme.accent
    selectedTextColor: Theme.inkOnAccent
    Accessible.role: Accessible.EditableText
    Accessible.name: label

    Label {
        text: field.placeholder
        visible: field.text === "" && field.preeditText === ""
        secondary: true
        font: field.font
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 10
        verticalAlignment: Text.AlignVCenter
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.field
        border.width: 1
        border.color: field.invalid ? Theme.reviewText : field.activeFocus ? Theme.focusRing : Theme.fieldBorder

        FocusRing {
            anchors.margins: -1
            radius: Theme.radius + 1
            shown: field.activeFocus
            border.color: field.invalid ? Theme.reviewText : Theme.focusRing
        }
    }
}
