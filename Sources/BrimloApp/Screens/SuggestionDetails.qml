import QtQuick
import QtQuick.Layouts
import Brimlo

// What is to be known of a suggestion before it goes.
ColumnLayout {
    id: details

    required property SuggestionRow row

    spacing: 5

    Label {
        text: details.row.regenerates
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
            text: RiskWords.outcome(details.row.risk)
            secondary: true
            Layout.fillWidth: true
        }
    }
    RowLayout {
        spacing: 6
        visible: details.row.officialCommand !== ""

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
            command: details.row.officialCommand
            Layout.fillWidth: true
        }
    }
}
