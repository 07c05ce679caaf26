pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The largest files. Return shows one in the file manager, Delete moves it to the Trash.
ScrollList {
    id: list

    required property LargeFileRows rows

    // The button that asked goes with its row, so the keys come back to the list.
    function trash(row) {
        forceActiveFocus();
        rows.trash(row);
    }

    label: qsTr("Large Files")
    model: rows
    bottomMargin: Theme.snug
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    onOpened: index => rows.reveal(index)
    Keys.onDeletePressed: trash(currentIndex)

    delegate: LargeFileRow {
        onClicked: list.currentIndex = index
        onDoubleClicked: list.rows.reveal(index)
        onRevealed: list.rows.reveal(index)
        onTrashed: list.trash(index)
    }
}
