import QtQuick
import Brimlo

// The user's rules, then those that are built in. Return opens a rule or a copy of it, Space
// switches a built-in one, Delete deletes one of the user's.
ScrollList {
    id: view

    required property RuleRows rows
    readonly property real headHeight: headerItem?.height ?? 0

    label: qsTr("Rules")
    model: rows
    currentIndex: -1
    bottomMargin: Theme.normal
    leftMargin: Theme.snug
    rightMargin: Theme.snug
    section.property: "isCustom"
    header: RuleListHead {}
    delegate: RuleRow {}

    // So that the heading above the first row is seen as well.
    onCurrentIndexChanged: if (currentIndex === 0)
        positionViewAtBeginning()
    onHeadHeightChanged: if (currentIndex <= 0)
        positionViewAtBeginning()
    onOpened: index => {
        rows.edit(index);
        rows.copy(index);
    }
    Keys.onSpacePressed: {
        const row = currentItem as RuleRow;
        if (row !== null)
            rows.setEnabled(currentIndex, !row.isEnabled);
    }
    Keys.onDeletePressed: rows.remove(currentIndex)
}
