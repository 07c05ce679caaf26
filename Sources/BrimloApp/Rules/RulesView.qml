import QtQuick
import QtQuick.Layouts
import Brimlo

// All cleanup rules: the user's own, which can be edited, and the built-in ones, which can be
// switched off.
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
            Layout.preferredWidth: Theme.scaled(200)
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
    // The user's own rules, then the built-in ones. Return opens a rule or a copy of it, Space
    // switches a built-in rule, Delete deletes one of the user's, Right and Left show and hide the
    // places of a rule.
    ScrollList {
        id: list

        readonly property real headHeight: headerItem?.height ?? 0

        function fold(expanded) {
            const row = currentItem as RuleRow;
            if (row !== null && row.expanded !== expanded)
                screen.rows.toggleExpanded(currentIndex);
        }

        focus: true
        label: qsTr("Rules")
        model: screen.rows
        currentIndex: -1
        roomBelow: Theme.normal
        leftMargin: Theme.snug
        rightMargin: Theme.snug
        section.property: "isCustom"
        header: RuleListHead {}
        delegate: RuleRow {}
        Layout.fillWidth: true
        Layout.fillHeight: true

        // Also shows the heading above the first row.
        onCurrentIndexChanged: if (currentIndex === 0)
            positionViewAtBeginning()
        onHeadHeightChanged: if (currentIndex <= 0)
            positionViewAtBeginning()
        onOpened: index => {
            screen.rows.edit(index);
            screen.rows.copy(index);
        }
        Keys.onSpacePressed: {
            const row = currentItem as RuleRow;
            if (row !== null)
                screen.rows.setEnabled(currentIndex, !row.isEnabled);
        }
        Keys.onRightPressed: fold(true)
        Keys.onLeftPressed: fold(false)
        Keys.onDeletePressed: screen.rows.remove(currentIndex)

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
