import QtQuick
import QtQuick.Layouts
import Brimlo

// The column headers of the list. A click sorts by a column, a second click reverses the order.
RowLayout {
    id: header

    property int countWidth: 80
    property int dateWidth: 100
    property int growthWidth: 0

    spacing: Theme.snug

    NodeHeaderCell {
        sortKey: "Name"
        Layout.fillWidth: true
    }
    NodeHeaderCell {
        sortKey: "Growth"
        text: qsTr("± since %1").arg(Format.date(AppModel.analyzer.since))
        flushRight: true
        visible: header.growthWidth > 0
        Layout.preferredWidth: header.growthWidth
    }
    NodeHeaderCell {
        sortKey: "Items"
        flushRight: true
        Layout.preferredWidth: header.countWidth
    }
    NodeHeaderCell {
        sortKey: "Size"
        flushRight: true
        Layout.preferredWidth: Math.max(header.countWidth, sample.implicitWidth)
    }
    NodeHeaderCell {
        sortKey: "Modified"
        Layout.preferredWidth: header.dateWidth
        Layout.leftMargin: Theme.tight
    }
    SizeText {
        id: sample

        visible: false
    }
}
