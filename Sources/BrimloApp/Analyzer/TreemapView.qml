pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The current folder as a treemap; below it the entry under the pointer and the legend.
FocusScope {
    id: view

    required property NodeRows rows

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

            TapHandler {
                acceptedButtons: Qt.RightButton
                onPressedChanged: if (pressed && map.hoveredRow >= 0)
                    menu.show(map.hoveredRow, map, point.position.x, point.position.y)
            }
            NodeMenu {
                id: menu

                rows: view.rows
            }
        }
        RowLayout {
            spacing: Theme.tight
            Layout.fillWidth: true
            Layout.leftMargin: Theme.snug
            Layout.rightMargin: Theme.snug
            Layout.bottomMargin: Theme.snug

            PathText {
                path: map.hoveredRow < 0 ? qsTr("Double-click to open a folder") : map.hoveredName + " · " + Format.bytes(map.hoveredSize)
                secondary: map.hoveredRow < 0
                font.pixelSize: Theme.caption
                Layout.fillWidth: true
                Layout.minimumWidth: 150
                Layout.preferredWidth: 150
            }
            FileKindLegend {
                spacing: view.width < 900 ? 6 : Theme.snug
                Layout.fillWidth: true
                Layout.preferredWidth: Layout.maximumWidth
                Layout.maximumWidth: Theme.scaled(550) + 7 * spacing
            }
        }
    }

    // The legend of the colours. It wraps.
    component FileKindLegend: Flow {
        spacing: Theme.snug

        Repeater {
            model: FileKinds.count

            Row {
                required property int index

                spacing: 5

                Rectangle {
                    width: Theme.scaled(10)
                    height: width
                    radius: 3
                    color: FileKinds.color(parent.index)
                    anchors.verticalCenter: parent.verticalCenter
                }
                Label {
                    text: FileKinds.label(parent.index)
                    secondary: true
                    font.pixelSize: Theme.caption
                }
            }
        }
    }
}
