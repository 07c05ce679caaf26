import QtQuick
import Brimlo

// What all kinds of rows in the Smart Clean list share.
ListRow {
    required property int index

    width: (list?.width ?? 0) - (list?.leftMargin ?? 0) - (list?.rightMargin ?? 0)
    leftPadding: Theme.huge + 6
    rightPadding: Theme.tight
    topPadding: 3
    bottomPadding: topPadding
}
