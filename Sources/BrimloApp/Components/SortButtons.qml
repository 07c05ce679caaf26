pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The sort order of a list: a menu of its keys, and a button that reverses it.
RowLayout {
    id: buttons

    required property RowOrder order
    required property list<string> keys

    spacing: Theme.tiny

    ToolbarButton {
        id: button

        text: qsTr("Sort by")
        help: qsTr("Sort by")
        hasMenu: true
        checked: menu.visible
        onClicked: menu.popup(button, 0, height + 4)

        PopupMenu {
            id: menu

            Repeater {
                model: buttons.keys

                MenuEntry {
                    id: entry

                    required property string modelData

                    text: modelData
                    checkable: true
                    onTriggered: buttons.order.key = modelData

                    // A click toggles `checked`, but the model decides.
                    Binding on checked {
                        value: buttons.order.key === entry.modelData
                    }
                    onCheckedChanged: checked = buttons.order.key === modelData
                }
            }
        }
    }
    ToolbarButton {
        symbol: buttons.order.ascending ? "arrow.up" : "arrow.down"
        help: qsTr("Reverse order")
        onClicked: buttons.order.ascending = !buttons.order.ascending
    }
}
