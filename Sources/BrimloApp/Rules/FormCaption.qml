import QtQuick
import QtQuick.Layouts
import Brimlo

// An explanation in small type below a field.
Label {
    secondary: true
    font.pixelSize: Theme.small
    wrapMode: Text.Wrap
    Layout.fillWidth: true
}
