pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The suggestions, and what belongs to those that are expanded. Space ticks, Left and Right fold,
// Return folds a suggestion and shows an item in the file manager.
ScrollList {
    id: view

    required property SuggestionRows rows

    function take(index) {
        currentIndex = index;
        forceActiveFocus(Qt.MouseFocusReason);
    }
    function fold(expanded) {
        const row = currentItem as SuggestionRow;
        if (row?.kind === "suggestion" && row.expanded !== expanded)
            rows.toggleExpanded(currentIndex);
        else if (!expanded)
            currentIndex = rows.head(currentIndex);
        keyed = true;
    }
    function open(index) {
        rows.toggleExpanded(index);
        rows.reveal(index);
    }

    label: qsTr("Suggestions")
    model: rows
    currentIndex: -1
    bottomMargin: Theme.tight
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    onOpened: index => open(index)
    Keys.onSpacePressed: rows.toggle(currentIndex)
    Keys.onLeftPressed: fold(false)
    Keys.onRightPressed: fold(true)

    delegate: SuggestionRow {
        onToggled: {
            view.take(index);
            view.rows.toggle(index);
        }
        onExpansionToggled: {
            view.take(index);
            view.rows.toggleExpanded(index);
        }
        onRevealed: view.rows.reveal(index)
    }
}
