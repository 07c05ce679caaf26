import QtQuick
import Brimlo

// What all kinds of rows in the Smart Clean list share.
ListRow {
    id: row

    required property int index

    signal menuWanted(point at)

    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    leftPadding: Theme.huge + 6
    rightPadding: Theme.tight
    topPadding: 3
    bottomPadding: topPadding

    PointHandler {
        acceptedButtons: Qt.RightButton
        onActiveChanged: if (active)
            row.menuWanted(point.position)
    }
}
