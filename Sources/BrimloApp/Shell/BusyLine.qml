import QtQuick
import QtQuick.Layouts
import Brimlo

// What long work is under way.
SlidingLine {
    id: line

    text: AppModel.busy

    Spinner {
        size: 16
        running: line.visible
    }
    Label {
        text: line.shownText
        Layout.fillWidth: true
        Accessible.ignored: true
    }
}
