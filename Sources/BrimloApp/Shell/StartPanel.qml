pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// A screen without results yet: its purpose, settings, buttons, and hints.
ScrollPane {
    id: pane

    property string symbol
    property string eyebrow
    property string title
    property string line
    default property alias setting: settings.data
    property alias actions: buttons.data
    property alias hints: notes.data

    maximumWidth: 580
    content: [
        ColumnLayout {
            id: panel

            spacing: Theme.tight
            Layout.fillWidth: true
            Layout.topMargin: Math.max(0, Math.round((pane.height - implicitHeight) * 0.45) - pane.padding)

            Rectangle {
                implicitWidth: 68
                implicitHeight: 68
                radius: 34
                color: Theme.subtle
                Layout.alignment: Qt.AlignHCenter
                Layout.bottomMargin: Theme.tight

                Icon {
                    anchors.centerIn: parent
                    symbol: pane.symbol
                    size: 32
                    side: size
                    color: Theme.secondaryText
                }
            }
            Eyebrow {
                text: pane.eyebrow
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: pane.title
                font.pixelSize: Theme.large
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.Heading
            }
            Label {
                text: pane.line
                secondary: true
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                lineHeight: 1.25
                Layout.fillWidth: true
            }
            ColumnLayout {
                id: settings

                visible: children.length > 0
                Layout.fillWidth: true
                Layout.topMargin: Theme.snug
            }
            RowLayout {
                id: buttons

                spacing: Theme.tight
                Layout.alignment: Qt.AlignHCenter
                Layout.topMargin: Theme.tight
            }
            ColumnLayout {
                id: notes

                spacing: Theme.tight
                Layout.fillWidth: true
                Layout.topMargin: Theme.normal
            }
        }
    ]
}
