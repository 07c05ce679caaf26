pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The entries of the current folder. The arrow keys select one row, with Shift a range, with
// Control they only move the focus; Space toggles a row, Control-A selects all, Escape none. Return
// and Right open a folder, Left goes back; Delete opens the review.
ScrollList {
    id: list

    required property NodeRows rows
    property int anchorRow: 0
    property int pickedRow: -1
    property double pickedAt: 0
    readonly property int countWidth: Math.ceil(widestCount.advanceWidth)
    readonly property int dateWidth: Math.ceil(widestDate.advanceWidth)
    // None without an earlier scan to compare with.
    readonly property int growthWidth: isNaN(AppModel.analyzer.since) ? 0 : Math.ceil(Math.max(widestGrowth.advanceWidth, growthHeading.advanceWidth + Theme.snug))

    signal backWanted

    function choose(row, modifiers) {
        currentIndex = row;
        if (modifiers & Qt.ShiftModifier) {
            rows.selectRange(Math.min(anchorRow, count - 1), row);
            return;
        }
        anchorRow = row;
        if (modifiers & (Qt.ControlModifier | Qt.MetaModifier))
            rows.toggleSelected(row);
        else
            rows.select(row);
    }
    // A row's handlers don't receive double clicks, because they share the presses with this one.
    function pick(row, modifiers) {
        const now = Date.now();
        const again = row === pickedRow && now - pickedAt < Application.styleHints.mouseDoubleClickInterval;
        pickedRow = again ? -1 : row;
        pickedAt = now;
        if (again && modifiers === Qt.NoModifier)
            rows.drill(row);
        else
            choose(row, modifiers);
    }
    function step(by, event) {
        event.accepted = !(event.modifiers & Qt.AltModifier);
        if (!event.accepted)
            return;
        go(currentIndex + by);
        if (!(event.modifiers & Qt.ControlModifier))
            choose(currentIndex, event.modifiers);
    }
    // At a position in a row, or below the row if opened from the keyboard.
    function showMenu(row, at) {
        const item = itemAtIndex(row);
        if (item !== null)
            menu.show(row, item, at?.x ?? item.width / 3, at?.y ?? item.height);
    }
    function begin() {
        currentIndex = rows.startRow();
        anchorRow = Math.max(0, currentIndex);
        pickedRow = -1;
        positionViewAtBeginning();
        positionViewAtIndex(anchorRow, ListView.Contain);
    }

    label: qsTr("Space Analyzer")
    model: rows
    roomAbove: Theme.tiny
    roomBelow: Theme.snug
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    onOpened: index => rows.drill(index)
    Keys.onUpPressed: event => step(-1, event)
    Keys.onDownPressed: event => step(1, event)
    Keys.onRightPressed: rows.drill(currentIndex)
    Keys.onLeftPressed: backWanted()
    Keys.onMenuPressed: showMenu(currentIndex)
    Keys.onDeletePressed: rows.review(currentIndex)
    Keys.onSpacePressed: choose(currentIndex, Qt.ControlModifier)
    Keys.onEscapePressed: event => {
        event.accepted = rows.selectedCount > 0;
        rows.clearSelection();
    }

    NodeMenu {
        id: menu

        rows: list.rows
    }
    TextMetrics {
        id: widestCount

        font.family: Theme.family
        font.pixelSize: Theme.body
        text: "88,888,888"
    }
    TextMetrics {
        id: widestDate

        font.family: Theme.family
        font.pixelSize: Theme.body
        text: Format.widestDate(Theme.family, Theme.body)
    }
    TextMetrics {
        id: widestGrowth

        font.family: Theme.family
        font.pixelSize: Theme.body
        text: "−888.88 GB"
    }
    TextMetrics {
        id: growthHeading

        font.family: Theme.family
        font.pixelSize: Theme.caption
        font.weight: Font.DemiBold
        text: qsTr("± since %1").arg(Format.date(AppModel.analyzer.since))
    }
    Shortcut {
        sequence: "Shift+F10"
        enabled: list.activeFocus
        onActivated: list.showMenu(list.currentIndex)
    }
    Shortcut {
        sequence: "Ctrl+A"
        enabled: list.activeFocus
        onActivated: list.rows.selectAll()
    }
    delegate: NodeRow {
        countWidth: list.countWidth
        dateWidth: list.dateWidth
        growthWidth: list.growthWidth
        onPicked: modifiers => {
            list.forceActiveFocus(Qt.MouseFocusReason);
            list.pick(index, modifiers);
        }
        onMenuWanted: at => {
            list.forceActiveFocus(Qt.MouseFocusReason);
            list.currentIndex = index;
            list.showMenu(index, at);
        }
    }
}
