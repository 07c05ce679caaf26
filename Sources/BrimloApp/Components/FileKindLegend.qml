pragma ComponentBehavior: Bound

import QtQuick
import Brimlo

// The treemap's colours and their words; what has no room on a line goes to the next.
Flow {
    spacing: Theme.snug

    Repeater {
        model: FileKinds.count

        Row {
            required property int index

            spacing: 5

            Rectangle {
                width: 10
                height: 10
                radius: 3
                color: FileKinds.color(parent.index)
                anchors.verticalCenter: parent.verticalCenter
            }
            Label {
                text: FileKinds.label(parent.index)
                secondary: true
                font.pixelSize: Theme.caption
            }
        }
    }
}
