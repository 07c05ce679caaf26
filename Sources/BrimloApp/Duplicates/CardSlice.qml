import QtQuick
import Brimlo

// A part of a card that goes over several rows of a list: its head, its foot, or a piece between.
// Head and foot reach under the piece between, which hides their inner corners, so its row has to
// stand above theirs.
Item {
    id: slice

    property bool isHead: false
    property bool isFoot: false
    readonly property bool isRound: isHead || isFoot

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: slice.isFoot ? -radius : 0
        anchors.bottomMargin: slice.isHead ? -radius : 0
        radius: slice.isRound ? Theme.radiusLarge : 0
        color: Theme.card
        border.width: slice.isRound ? 1 : 0
        border.color: Theme.border
    }
    Rectangle {
        width: 1
        height: parent.height
        color: Theme.border
        visible: !slice.isRound
    }
    Rectangle {
        width: 1
        height: parent.height
        anchors.right: parent.right
        color: Theme.border
        visible: !slice.isRound
    }
}
