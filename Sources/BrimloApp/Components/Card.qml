import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A rounded panel with its content in a column.
T.Pane {
    id: card

    default property alias content: column.data
    property color color: Theme.card
    property bool bordered: true

    implicitWidth: Math.max(120, column.implicitWidth + leftPadding + rightPadding)
    implicitHeight: column.implicitHeight + topPadding + bottomPadding
    padding: Theme.normal
    spacing: Theme.snug
    contentItem: ColumnLayout {
        id: column

        spacing: card.spacing
    }
    background: Rectangle {
        radius: Theme.radiusLarge
        color: card.color
        border.width: card.bordered ? 1 : 0
        border.color: Theme.border
    }
}
