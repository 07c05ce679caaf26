import QtQuick
import QtQuick.Layouts

// A scrollable column, centred, at most `maximumWidth` wide.
ScrollArea {
    id: pane

    default property alias content: column.data
    property alias spacing: column.spacing
    property int padding: Theme.wide
    property int maximumWidth: 1200

    clip: true
    contentHeight: column.implicitHeight + 2 * padding
    implicitHeight: contentHeight
    implicitWidth: column.implicitWidth + 2 * padding

    ColumnLayout {
        id: column

        spacing: Theme.roomy
        y: pane.padding
        width: Math.min(pane.maximumWidth, pane.width - 2 * pane.padding)
        x: Math.round((pane.width - width) / 2)
    }
}
