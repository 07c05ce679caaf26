import QtQuick
import QtQml
import Brimlo

// The context menu of an entry. It closes when the entries change, so that it never acts on a
// different one.
PopupMenu {
    id: menu

    required property NodeRows rows
    property int row: -1
    property bool isDirectory: false
    property bool isAggregate: false

    function show(place, item, x, y) {
        row = place;
        isDirectory = rows.isDirectory(place);
        isAggregate = rows.isAggregate(place);
        popup(item, x, y);
    }

    Connections {
        target: menu.rows

        function onNodesChanged() {
            menu.close();
        }
    }

    MenuEntry {
        text: qsTr("Open Folder")
        symbol: "folder"
        enabled: menu.isDirectory
        onTriggered: menu.rows.drill(menu.row)
    }
    MenuEntry {
        text: qsTr("Reveal in %1").arg(Desktop.fileManager)
        symbol: "arrow.up.forward.square"
        onTriggered: menu.rows.reveal(menu.row)
    }
    MenuEntry {
        text: qsTr("Copy Path")
        symbol: "doc.on.clipboard"
        onTriggered: menu.rows.copyPath(menu.row)
    }
    MenuDivider {}
    MenuEntry {
        text: qsTr("Review & Move to Trash…")
        symbol: "trash"
        enabled: !menu.isAggregate
        onTriggered: menu.rows.review(menu.row)
    }
    MenuDivider {}
    MenuEntry {
        text: qsTr("Create Cleanup Rule from This…")
        symbol: "plus"
        onTriggered: menu.rows.newRule(menu.row)
    }
}
