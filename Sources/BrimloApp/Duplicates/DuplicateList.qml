pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The groups of equal files, each a card over several rows. Return shows a file in the file manager.
ScrollList {
    id: list

    required property DuplicateRows rows

    label: qsTr("Duplicates")
    model: rows
    bottomMargin: Theme.snug
    leftMargin: Theme.wide
    rightMargin: Theme.wide
    onOpened: index => rows.reveal(index)

    delegate: DuplicateRow {
        onClicked: list.currentIndex = index
        onDoubleClicked: list.rows.reveal(index)
        // The button that asked goes with its row, so the keys come back to the list.
        onCloned: {
            list.forceActiveFocus();
            list.rows.clone(index);
        }
        onTrashed: {
            list.forceActiveFocus();
            list.rows.trash(index);
        }
    }
}
