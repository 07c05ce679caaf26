import QtQuick
import QtQuick.Templates as T

// The tooltip of its parent, created when first needed.
Item {
    id: tip

    property string text
    property bool shown: false

    Loader {
        active: tip.shown && tip.text !== ""

        // A loader of Qt 6.4 can't create a bound component.
        // qmllint disable unqualified
        sourceComponent: T.ToolTip {
            parent: tip.parent
            visible: true
            delay: Theme.tipDelay
            text: tip.text
            x: Math.round((parent.width - width) / 2)
            y: parent.height + 6
            margins: 6
            padding: 7
            leftPadding: 10
            rightPadding: 10
            implicitWidth: Math.min(360, implicitContentWidth + leftPadding + rightPadding)
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            closePolicy: T.Popup.NoAutoClose
            contentItem: Label {
                text: tip.text
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
                color: Theme.dark ? "#1b2127" : "#ffffff"
            }
            background: Rectangle {
                radius: 6
                color: Theme.dark ? "#dfe3e7" : "#2a3138"
            }
        }
        // qmllint enable unqualified
    }
}
