import QtQuick
import Brimlo

// A list of files with a context menu, opened by a right click, the Menu key or Shift+F10.
ScrollList {
    id: list

    // What `EntryMenu` needs, and `open`, `isFile` and `picture` of a row.
    required property var rows

    // Entries of a screen's own, below the others of the menu.
    property alias entries: menu.contentData

    // The row at a point of the window; -1 if there is none.
    function rowUnder(scenePoint) {
        const place = contentItem.mapFromItem(null, scenePoint.x, scenePoint.y);
        return indexAt(place.x, place.y);
    }
    // At a point of the window, or below the row if opened from the keyboard.
    function showMenu(row, scenePoint) {
        const item = itemAtIndex(row);
        if (item === null || !rows.isFile(row))
            return;
        forceActiveFocus();
        currentIndex = row;
        const at = scenePoint ? item.mapFromItem(null, scenePoint.x, scenePoint.y) : Qt.point(item.width / 3, item.height);
        menu.show(row, item, at.x, at.y);
    }

    // Shows the file of a row if it is a picture.
    function showPicture(row) {
        const address = rows.picture(row);
        if (address.toString() !== "")
            preview.show(address);
    }

    model: rows
    onOpened: index => rows.reveal(index)
    Keys.onMenuPressed: showMenu(currentIndex)

    EntryMenu {
        id: menu

        rows: list.rows
        onOpenWanted: list.rows.open(row)
        onAboutToShow: pictureEntry.enabled = list.rows.picture(row).toString() !== ""
        Component.onCompleted: insertItem(1, pictureEntry)
    }
    MenuEntry {
        id: pictureEntry

        text: qsTr("Preview")
        symbol: "eye"
        shortcut: "Ctrl+Y"
        onTriggered: list.showPicture(menu.row)
    }
    PicturePreview {
        id: preview
    }
    Shortcut {
        sequence: "Ctrl+Y"
        enabled: list.activeFocus
        onActivated: list.showPicture(list.currentIndex)
    }
    Shortcut {
        sequence: "Shift+F10"
        enabled: list.activeFocus
        onActivated: list.showMenu(list.currentIndex)
    }
    PointHandler {
        acceptedButtons: Qt.RightButton
        onActiveChanged: if (active)
            list.showMenu(list.rowUnder(point.scenePosition), point.scenePosition)
    }
}
