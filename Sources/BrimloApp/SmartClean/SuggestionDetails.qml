pragma ComponentBehavior: Bound

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
    required property bool expanded
    required property var reasons

    signal whyWanted

    text: regenerates

    ColumnLayout {
        spacing: 5
        Layout.fillWidth: true

        Label {
            text: Format.withCode(details.regenerates)
            textFormat: Text.RichText
            visible: details.regenerates !== ""
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Layout.fillWidth: true
            Layout.maximumWidth: 760
            Accessible.name: details.regenerates
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
        Repeater {
            model: details.expanded ? details.reasons : []

            Label {
                required property string modelData

                text: modelData
                secondary: true
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Layout.maximumWidth: 760
            }
        }
    }
    // The reasons are folded away until asked for.
    PlainButton {
        text: qsTr("Why?")
        symbol: details.expanded ? "chevron.down" : "chevron.right"
        help: details.expanded ? qsTr("Hide the reasons") : qsTr("Show why this is suggested")
        ink: Theme.secondaryText
        focusPolicy: Qt.NoFocus
        Layout.alignment: Qt.AlignTop
        onClicked: details.whyWanted()
    }
}
