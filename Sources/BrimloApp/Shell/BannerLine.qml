import QtQuick
import QtQuick.Layouts
import Brimlo

// The sentence about the last operation. One that is long scrolls.
SlidingLine {
    id: line

    text: AppModel.banner

    Icon {
        symbol: "info.circle"
        color: Theme.infoText
    }
    Flickable {
        id: pane

        implicitHeight: Math.min(words.implicitHeight, 6 * Theme.roomy)
        contentHeight: words.implicitHeight
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        Layout.fillWidth: true

        Label {
            id: words

            text: line.shownText
            width: pane.width
            wrapMode: Text.Wrap
            lineHeight: 1.15
            Accessible.ignored: true
        }
    }
    OutlineButton {
        text: qsTr("Dismiss")
        implicitHeight: Theme.controlHeight - 2
        onClicked: AppModel.banner = ""
    }
}
