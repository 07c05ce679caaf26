import QtQuick
import QtQuick.Layouts
import Brimlo

// All cleanup rules: the user's own to write, those that are built in to switch off.
Screen {
    id: screen

    readonly property RuleRows rows: AppModel.rules.rows
    readonly property int customCount: AppModel.rules.customCount

    title: qsTr("Rules")
    line: customCount === 1 ? qsTr("1 custom rule") : qsTr("%1 custom rules").arg(Format.count(customCount))
    toolbar: [
        SearchField {
            id: search

            placeholder: qsTr("Search rules")
            Layout.preferredWidth: 200
            Keys.onDownPressed: list.forceActiveFocus()
        },
        ToolbarButton {
            text: qsTr("Import")
            symbol: "square.and.arrow.down"
            onClicked: files.importRules()
        },
        ToolbarButton {
            text: qsTr("Export")
            symbol: "square.and.arrow.up"
            enabled: screen.customCount > 0
            onClicked: files.exportRules()
        },
        SolidButton {
            text: qsTr("New rule")
            symbol: "plus"
            onClicked: AppModel.rules.newRule()
        }
    ]

    Binding {
        target: screen.rows
        property: "query"
        value: search.text
    }
    RuleFiles {
        id: files
    }
    RuleList {
        id: list

        rows: screen.rows
        focus: true
        Layout.fillWidth: true
        Layout.fillHeight: true

        EmptyState {
            visible: list.count === 0
            symbol: "magnifyingglass"
            title: qsTr("No Results for “%1”").arg(Format.oneLine(search.text.trim()))
            line: qsTr("Check the spelling or try a new search.")
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.wide
        }
    }
}
