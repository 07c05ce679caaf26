import QtQuick
import QtQuick.Layouts
import Brimlo

// An explanation of a setting in small type.
Label {
    secondary: true
    font.pixelSize: Theme.small
    wrapMode: Text.Wrap
    lineHeight: 1.2
    Layout.fillWidth: true
}
