pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The problems in a report, as it words them, or other lines of it.
ColumnLayout {
    id: section

    property list<string> problems
    property string title: qsTr("Problems")
    property string symbol: "exclamationmark.triangle"

    spacing: Theme.tight
    Layout.minimumHeight: implicitHeight - list.implicitHeight + Math.min(list.contentHeight, 80)

    Eyebrow {
        text: section.title
    }
    Card {
        padding: Theme.tight
        color: Theme.faded(Theme.review, 0.08)
        bordered: false
        Layout.fillWidth: true
        Layout.fillHeight: true

        ScrollList {
            id: list

            label: section.title
            model: section.problems
            implicitHeight: Math.min(contentHeight, 220)
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: Math.min(contentHeight, 80)

            delegate: ListRow {
                id: row

                required property string modelData

                text: modelData
                topPadding: 6
                bottomPadding: 6

                Icon {
                    symbol: section.symbol
                    size: 14
                    color: Theme.reviewText
                    Layout.alignment: Qt.AlignTop
                }
                Label {
                    text: row.modelData
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    font.pixelSize: Theme.small
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
            }
        }
    }
}
