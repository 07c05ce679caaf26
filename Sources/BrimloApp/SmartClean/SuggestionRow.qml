import QtQuick
import Brimlo

// A line of the Smart Clean list, as far as all kinds of them agree.
ListRow {
    required property int index

    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    leftPadding: Theme.huge + 6
    rightPadding: Theme.tight
    topPadding: 3
    bottomPadding: topPadding
}
