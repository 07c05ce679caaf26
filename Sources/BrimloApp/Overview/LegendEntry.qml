import QtQuick
import QtQuick.Layouts
import Brimlo

// A colour of a bar and what it stands for.
RowLayout {
    id: entry

    property color color
    property string text

    spacing: 6

    Rectangle {
        implicitWidth: 9
        implicitHeight: 9
        radius: 3
        color: entry.color
        Accessible.ignored: true
    }
    Label {
        text: entry.text
        secondary: true
        font.pixelSize: Theme.small
    }
}
