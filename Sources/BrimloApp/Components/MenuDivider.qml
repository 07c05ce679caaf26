import QtQuick
import QtQuick.Templates as T

T.MenuSeparator {
    implicitHeight: 9
    leftPadding: 9
    rightPadding: 9
    contentItem: Item {
        Divider {
            width: parent.width
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
