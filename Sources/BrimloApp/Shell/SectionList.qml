pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The list of sections; the arrow keys change the current one.
FocusScope {
    id: list

    // No focus ring after a click, only after a key.
    property bool keyed: false
    readonly property var sections: Sections.all
    readonly property int place: sections.findIndex(section => section.id === AppModel.section)

    function choose(place) {
        keyed = true;
        const bounded = Math.min(sections.length - 1, Math.max(0, place));
        AppModel.section = sections[bounded].id;
    }

    implicitHeight: column.implicitHeight
    activeFocusOnTab: true
    onActiveFocusChanged: keyed = activeFocus
    Keys.onUpPressed: choose(place - 1)
    Keys.onDownPressed: choose(place + 1)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
        if (event.accepted)
            choose(event.key === Qt.Key_Home ? 0 : sections.length - 1);
    }
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Sections")
    Accessible.focusable: true

    ColumnLayout {
        id: column

        spacing: 2
        width: parent.width

        Repeater {
            model: list.sections

            SidebarRow {
                required property int index
                required property var modelData

                text: modelData.title
                symbol: modelData.symbol
                chosen: index === list.place
                ringed: list.keyed && list.activeFocus && chosen
                onClicked: {
                    list.forceActiveFocus(Qt.MouseFocusReason);
                    list.keyed = false;
                    AppModel.section = modelData.id;
                }
            }
        }
    }
}
