import QtQuick
import Brimlo

// The sort order of a folder's entries.
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
            sortKey: "Size"
        }
        SortEntry {
            sortKey: "Name"
        }
        SortEntry {
            sortKey: "Modified"
        }
        SortEntry {
            sortKey: "Items"
        }
    }

    // One sort order, checked while it is the current one.
    component SortEntry: MenuEntry {
        id: entry

        required property string sortKey

        text: sortKey

        checkable: true
        onTriggered: AppModel.analyzer.rows.sortKey = sortKey

        // A click toggles `checked`, but the model decides.
        Binding on checked {
            value: AppModel.analyzer.rows.sortKey === entry.sortKey
        }
        onCheckedChanged: checked = AppModel.analyzer.rows.sortKey === sortKey
    }
}
