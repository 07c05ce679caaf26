import QtQuick
import QtQml
import Brimlo

// The context menu of a file or folder in a list; a screen may add entries of its own. It closes
// when rows come or go, so that it never acts on a different one.
PopupMenu {
    id: menu

    // The list: `reveal`, `copyPath` and `review` take one of its rows.
    required property var rows
    property int row: -1
    property string openText: qsTr("Open")
    property bool canOpen: true
    property bool canReview: true

    signal openWanted

    function show(place, item, x, y) {
        row = place;
        popup(item, x, y);
    }

    Connections {
        target: menu.rows

        function onRowsInserted() {
            menu.close();
        }
        function onRowsRemoved() {
            menu.close();
        }
        function onModelReset() {
            menu.close();
        }
    }

    MenuEntry {
        text: menu.openText
        symbol: "folder"
        enabled: menu.canOpen
        onTriggered: menu.openWanted()
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
        enabled: menu.canReview
        onTriggered: menu.rows.review(menu.row)
    }
}
