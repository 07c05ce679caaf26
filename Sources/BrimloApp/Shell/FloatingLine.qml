import QtQuick
import QtQuick.Layouts
import Brimlo

// A message that floats over the screen. It fades in while there is a `text`, and fades out still
// showing the last one.
Item {
    id: line

    property string text
    property string shownText
    readonly property bool presented: text !== ""
    default property alias content: row.data

    implicitHeight: row.implicitHeight + 2 * Theme.tight
    opacity: presented ? 1 : 0
    visible: opacity > 0
    Layout.fillWidth: true
    onTextChanged: if (text !== "")
        shownText = text
    Component.onCompleted: shownText = text
    Accessible.role: Accessible.Notification
    Accessible.name: text

    PopupGround {
        anchors.fill: parent
    }
    // What lies below gets no press.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
    }
    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Theme.normal
        anchors.rightMargin: Theme.tight
        spacing: Theme.snug
        enabled: line.presented
    }
    Behavior on opacity {
        NumberAnimation {
            duration: Theme.duration
            easing.type: Easing.OutQuad
        }
    }
}
