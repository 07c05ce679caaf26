pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Brimlo

// The problems in a report, as it words them.
ColumnLayout {
    id: section

    property list<string> problems

    spacing: Theme.tight

    Eyebrow {
        text: qsTr("Problems")
    }
    Card {
        padding: Theme.tight
        color: Theme.faded(Theme.review, 0.08)
        bordered: false
        Layout.fillWidth: true
        Layout.fillHeight: true

        ScrollList {
            id: list

            label: qsTr("Problems")
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
                    symbol: "exclamationmark.triangle"
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
