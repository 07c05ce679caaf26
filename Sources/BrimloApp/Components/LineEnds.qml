import QtQuick
import QtQuick.Layouts

// Two parts at the ends of a line. With large text, the second goes below the first.
GridLayout {
    id: line

    property alias start: first.data
    property alias end: second.data

    columns: first.implicitWidth + columnSpacing + second.implicitWidth <= width ? 2 : 1
    columnSpacing: Theme.tight
    rowSpacing: Theme.tiny
    Layout.fillWidth: true
    Layout.minimumWidth: 0

    RowLayout {
        id: first

        spacing: Theme.tight
        Layout.fillWidth: true
    }
    RowLayout {
        id: second

        spacing: Theme.tight
        Layout.fillWidth: true
        Layout.maximumWidth: implicitWidth
    }
}
