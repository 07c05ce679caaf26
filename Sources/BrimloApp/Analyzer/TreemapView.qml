pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The current folder as a treemap; below it the entry under the pointer and the legend.
FocusScope {
    id: view

    required property NodeRows rows

    function showMenu(at) {
        if (map.hoveredRow >= 0)
            menu.show(map.hoveredRow, map, at.x, at.y);
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TreemapItem {
            id: map

            rows: view.rows
            fontFamily: Theme.family
            ground: Theme.window
            focus: true
            Layout.fillWidth: true
            Layout.fillHeight: true
            Keys.onEscapePressed: event => {
                event.accepted = view.rows.selectedCount > 0;
                view.rows.clearSelection();
            }
            Keys.onDeletePressed: view.rows.review(hoveredRow)
            Keys.onMenuPressed: view.showMenu(hoveredPlace)

            TapHandler {
                acceptedButtons: Qt.RightButton
                onPressedChanged: if (pressed)
                    view.showMenu(point.position)
            }
            Shortcut {
                sequence: "Shift+F10"
                enabled: map.activeFocus
                onActivated: view.showMenu(map.hoveredPlace)
            }
            NodeMenu {
                id: menu

                rows: view.rows
            }
        }
        PathText {
            path: map.hoveredRow < 0 ? qsTr("Double-click to open a folder") : map.hoveredName + " · " + Format.bytes(map.hoveredSize) + (map.hoveredGrowth === "" ? "" : " · " + qsTr("%1 since %2").arg(map.hoveredGrowth).arg(Format.date(AppModel.analyzer.since)))
            secondary: map.hoveredRow < 0
            font.pixelSize: Theme.caption
            Layout.fillWidth: true
            Layout.leftMargin: Theme.snug
            Layout.rightMargin: Theme.snug
        }
        FileFilters {
            choice: view.rows.choice
            isLegend: true
            Layout.fillWidth: true
            Layout.margins: Theme.snug
            Layout.topMargin: Theme.tiny
        }
    }
}
