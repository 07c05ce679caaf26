import QtQuick
import Brimlo

// One order, ticked while it is the one chosen.
MenuEntry {
    id: entry

    required property string sortKey

    checkable: true
    onTriggered: AppModel.analyzer.sortKey = sortKey

    // A press turns the tick by itself; the model says what it is.
    Binding on checked {
        value: AppModel.analyzer.sortKey === entry.sortKey
    }
    onCheckedChanged: checked = AppModel.analyzer.sortKey === sortKey
}
