import QtQuick
import QtQuick.Layouts
import Brimlo

// What a field wants, in small type below it.
Label {
    secondary: true
    font.pixelSize: Theme.small
    wrapMode: Text.Wrap
    Layout.fillWidth: true
}
