import QtQuick
import Brimlo

// One folder of the way, after the sign that it lies in the one before.
Row {
    id: crumb

    required property int index
    required property string name
    property bool isLast: false

    signal chosen
    signal focused

    spacing: 2

    Icon {
        symbol: "chevron.right"
        visible: crumb.index > 0
        size: 12
        color: Theme.secondaryText
        anchors.verticalCenter: parent.verticalCenter
    }
    PlainButton {
        text: Format.oneLine(crumb.name)
        width: Math.min(implicitWidth, 220)
        font.weight: crumb.isLast ? Font.DemiBold : Font.Normal
        ink: crumb.isLast ? Theme.text : Theme.secondaryText
        onClicked: crumb.chosen()
        onActiveFocusChanged: if (activeFocus)
            crumb.focused()
    }
}
