pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// Errors or warnings of a rule, one per line.
ColumnLayout {
    id: faults

    property var lines: []
    property string symbol
    property color ink

    spacing: 6
    visible: lines.length > 0
    Layout.fillWidth: true

    Repeater {
        model: faults.lines

        RowLayout {
            id: row

            required property string modelData

            spacing: 7
            Layout.fillWidth: true

            Icon {
                symbol: faults.symbol
                size: 14
                color: faults.ink
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 1
            }
            Label {
                text: row.modelData
                color: faults.ink
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
                lineHeight: 1.15
                Layout.fillWidth: true
            }
        }
    }
}
