import QtQuick
import Brimlo

// A path on one line: its middle gives way first, and the whole of it is in the tooltip.
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
