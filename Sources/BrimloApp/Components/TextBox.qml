import QtQuick
import QtQuick.Templates as T

// A few lines to write in. Tab leads on, as from a field.
T.TextArea {
    id: area

    property string placeholder
    property string label: placeholder

    implicitWidth: 200
    implicitHeight: Math.max(3 * Theme.body + 24, contentHeight + topPadding + bottomPadding)
    padding: 9
    leftPadding: 10
    rightPadding: 10
    font.family: Theme.family
    font.pixelSize: Theme.body
    color: enabled ? Theme.text : Theme.disabledText
    wrapMode: TextEdit.Wrap
    textFormat: TextEdit.PlainText
    selectByMouse: true
    selectionColor: Theme.accent
    selectedTextColor: Theme.inkOnAccent
    KeyNavigation.priority: KeyNavigation.BeforeItem
    KeyNavigation.tab: nextItemInFocusChain(true)
    KeyNavigation.backtab: nextItemInFocusChain(false)
    Accessible.role: Accessible.EditableText
    Accessible.name: label
    Accessible.multiLine: true

    Label {
        text: area.placeholder
        visible: area.length === 0 && area.preeditText === ""
        secondary: true
        anchors.fill: parent
        anchors.margins: area.padding
        anchors.leftMargin: area.leftPadding
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.field
        border.width: 1
        border.color: Theme.fieldBorder

        FocusRing {
            anchors.margins: -1
            radius: Theme.radius + 1
            shown: area.activeFocus
        }
    }
}
