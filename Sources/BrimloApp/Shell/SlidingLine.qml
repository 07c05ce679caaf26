import QtQuick
import QtQuick.Layouts
import Brimlo

// A message above the screens. It slides in while there is a `text`, and slides out still showing
// the last one.
Item {
    id: line

    property string text
    property string shownText
    readonly property bool presented: text !== ""
    default property alias content: row.data

    implicitHeight: presented ? row.implicitHeight + 2 * Theme.tight + 1 : 0
    opacity: presented ? 1 : 0
    visible: opacity > 0
    clip: true
    Layout.fillWidth: true
    onTextChanged: if (text !== "")
        shownText = text
    Component.onCompleted: shownText = text
    Accessible.role: Accessible.Notification
    Accessible.name: text

    Rectangle {
        anchors.fill: parent
        color: Theme.card
    }
    RowLayout {
        id: row

        spacing: Theme.snug
        height: implicitHeight
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.tight + 1
        anchors.leftMargin: Theme.wide
        anchors.rightMargin: Theme.wide
    }
    Divider {
        width: parent.width
        anchors.bottom: parent.bottom
    }
    Behavior on implicitHeight {
        NumberAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
    Behavior on opacity {
        NumberAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
}
