import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brimlo

// A section in the sidebar.
T.ItemDelegate {
    id: row

    property string symbol
    property bool chosen: false
    property bool ringed: false
    readonly property color ink: chosen ? Theme.accentText : Theme.text

    implicitHeight: Theme.rowHeight
    leftPadding: 10
    rightPadding: 10
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Layout.fillWidth: true
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: chosen
    Accessible.onPressAction: row.clicked()

    contentItem: RowLayout {
        spacing: 10

        Icon {
            symbol: row.symbol
            color: row.chosen ? row.ink : Theme.secondaryText
        }
        Label {
            text: row.text
            color: row.ink
            font.weight: row.chosen ? Font.DemiBold : Font.Normal
            Layout.fillWidth: true
            Accessible.ignored: true
        }
    }
    background: HoverHighlight {
        selected: row.chosen

        FocusRing {
            anchors.margins: 0
            radius: Theme.radius
            shown: row.ringed
        }
    }
}
