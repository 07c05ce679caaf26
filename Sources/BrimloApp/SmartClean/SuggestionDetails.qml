import QtQuick
import QtQuick.Layouts
import Brimlo

// The details of a suggestion.
SuggestionRow {
    id: details

    required property string risk
    required property bool isDocker
    required property string regenerates
    required property string officialCommand

    text: regenerates

    ColumnLayout {
        spacing: 5
        Layout.fillWidth: true

        Label {
            text: details.regenerates
            visible: text !== ""
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Layout.fillWidth: true
            Layout.maximumWidth: 760
        }
        RowLayout {
            spacing: 6

            Icon {
                symbol: "shield.lefthalf.filled"
                size: 14
                color: Theme.secondaryText
            }
            Label {
                text: details.isDocker ? qsTr("Goes for good, through Docker.") : RiskWords.outcome(details.risk)
                secondary: true
                Layout.fillWidth: true
            }
        }
        RowLayout {
            spacing: 6
            visible: details.officialCommand !== ""

            Icon {
                symbol: "terminal"
                size: 14
                color: Theme.secondaryText
            }
            Label {
                text: qsTr("Official command:")
                secondary: true
            }
            CommandText {
                command: details.officialCommand
                Layout.fillWidth: true
            }
        }
    }

    // A command that can be selected and copied.
    component CommandText: TextInput {
        id: text

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
}
