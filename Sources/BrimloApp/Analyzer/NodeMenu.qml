import QtQuick
import QtQml
import Brimlo

// The context menu of an entry. It also closes when the entries change their order.
EntryMenu {
    id: menu

    openText: qsTr("Open Folder")
    onAboutToShow: {
        canOpen = rows.isDirectory(row);
        canReview = !rows.isAggregate(row);
    }
    onOpenWanted: rows.drill(row)

    Connections {
        target: menu.rows

        function onNodesChanged() {
            menu.close();
        }
    }

    MenuDivider {}
    MenuEntry {
        text: qsTr("Create Cleanup Rule from This…")
        symbol: "plus"
        onTriggered: menu.rows.newRule(menu.row)
    }
}
