import QtQuick
import QtQuick.Layouts

// Two parts of a line, the second at its end. With large text, the second goes below the first.
Item {
    id: line

    property alias start: first.data
    property alias end: second.data
    readonly property bool fits: first.implicitWidth + first.spacing + second.implicitWidth <= width

    implicitHeight: fits ? Math.max(first.implicitHeight, second.implicitHeight) : first.implicitHeight + Theme.tiny + second.implicitHeight
    Layout.fillWidth: true

    RowLayout {
        id: first

        spacing: Theme.tight
        width: line.fits ? line.width - second.width - spacing : line.width
        y: line.fits ? (line.height - height) / 2 : 0
    }
    RowLayout {
        id: second

        spacing: Theme.tight
        width: Math.min(implicitWidth, line.width)
        x: line.fits ? line.width - width : 0
        y: line.fits ? (line.height - height) / 2 : line.height - height
    }
}
