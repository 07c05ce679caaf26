import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brimlo

// The name of a column, with an arrow in the one that the list is sorted by.
T.AbstractButton {
    id: cell

    required property string sortKey
    property bool flushRight: false
    readonly property bool sorts: AppModel.analyzer.sortKey === sortKey

    implicitHeight: Theme.caption + 13
    implicitWidth: line.implicitWidth
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.name: text
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        id: line

        spacing: 3
        layoutDirection: cell.flushRight ? Qt.RightToLeft : Qt.LeftToRight

        Label {
            text: cell.text
            secondary: !cell.sorts && !cell.hovered
            font.pixelSize: Theme.caption
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Icon {
            symbol: AppModel.analyzer.ascending ? "chevron.up" : "chevron.down"
            visible: cell.sorts
            size: 11
        }
        Item {
            Layout.fillWidth: true
        }
    }
}
