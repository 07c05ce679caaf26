import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Brimlo

// A column header, with an arrow if the list is sorted by it.
T.AbstractButton {
    id: cell

    required property string sortKey
    readonly property RowOrder order: AppModel.analyzer.rows.order
    property bool flushRight: false
    readonly property bool sorts: order.key === sortKey

    text: sortKey
    implicitHeight: Theme.caption + 13
    implicitWidth: line.implicitWidth
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.name: text
    Accessible.onPressAction: clicked()
    onClicked: order.sortBy(sortKey)

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
            symbol: cell.order.ascending ? "chevron.up" : "chevron.down"
            visible: cell.sorts
            size: 11
        }
        Item {
            Layout.fillWidth: true
        }
    }
}
