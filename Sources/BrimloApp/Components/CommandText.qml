import QtQuick
import Brimlo

// A command that can be selected and copied.
TextInput {
    property string command

    text: Format.oneLine(command)
    readOnly: true
    selectByMouse: true
    activeFocusOnPress: true
    clip: true
    font.family: "monospace"
    font.pixelSize: Theme.small
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.inkOnAccent
    Accessible.role: Accessible.StaticText
    Accessible.name: command
}
