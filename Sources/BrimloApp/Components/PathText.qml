import QtQuick
import Brimlo

// A path on one line, elided in the middle, in full in the tooltip.
Label {
    id: label

    property string path

    text: Format.oneLine(path)
    elide: Text.ElideMiddle
    maximumLineCount: 1
    Accessible.name: path

    HoverHandler {
        id: pointer
    }
    HelpTip {
        text: label.truncated ? label.text : ""
        shown: pointer.hovered
    }
}
