import QtQuick
import Brimlo

// What the entries of a folder are sorted by.
ToolbarButton {
    id: button

    text: qsTr("Sort by")
    help: qsTr("Sort by")
    hasMenu: true
    checked: menu.visible
    onClicked: menu.popup(button, 0, height + 4)

    PopupMenu {
        id: menu

        SortEntry {
            text: qsTr("Size")
            sortKey: "Size"
        }
        SortEntry {
            text: qsTr("Name")
            sortKey: "Name"
        }
        SortEntry {
            text: qsTr("Modified")
            sortKey: "Modified"
        }
        SortEntry {
            text: qsTr("Items")
            sortKey: "Items"
        }
    }

    // One order, ticked while it is the one chosen.
    component SortEntry: MenuEntry {
        id: entry

        required property string sortKey

        checkable: true
        onTriggered: AppModel.analyzer.sortKey = sortKey

        // A press turns the tick by itself; the model says what it is.
        Binding on checked {
            value: AppModel.analyzer.sortKey === entry.sortKey
        }
        onCheckedChanged: checked = AppModel.analyzer.sortKey === sortKey
    }
}
